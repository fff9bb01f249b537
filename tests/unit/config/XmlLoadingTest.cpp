// How a document is made and loaded, seen from a parser that loads in its own time.
#include "config/Axes.h"
#include "config/Configuration.h"
#include "config/XmlDocument.h"
#include "framework/String.h"
#include "tests/support/SpecificationFixture.h"
#include "tests/support/TestClasses.h"

#include <functional>
#include <optional>
#include <utility>

namespace zt::test {
namespace {

using testing::ElementsAre;

constexpr CLSID ParserClass = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID ParserInterface = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID Parser2Interface = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// The platform's parser, as far as it is used.
// clang-format off
#define PARSER_METHODS(METHOD)                                  \
    METHOD(selectSingleNode, 37, BSTR, IXMLDOMNode**)           \
    METHOD(load,             58, VARIANT, VARIANT_BOOL*)        \
    METHOD(get_readyState,   59, long*)                         \
    METHOD(get_parseError,   60, IXMLDOMParseError**)           \
    METHOD(put_async,        63, VARIANT_BOOL)                  \
    METHOD(abort,            64)                                \
    METHOD(setProperty,      80, BSTR, VARIANT)
#define PARSE_ERROR_METHODS(METHOD)                             \
    METHOD(get_errorCode,     7, long*)
// clang-format on
struct Parser : IDispatch {
    static constexpr char Name[] = "Parser";
    ZT_CONTRACT(PARSER_METHODS, ZT_EARLY_BOUND)
};
struct ParseError : IDispatch {
    static constexpr char Name[] = "ParseError";
    ZT_CONTRACT(PARSE_ERROR_METHODS, ZT_EARLY_BOUND)
};

// A well-formed file without end: each test says otherwise what differs.
class XmlLoading : public testing::Test {
  protected:
    XmlLoading() {
        m_parser.Answer(ParserInterface);
        m_parser.Answer(Parser2Interface);
        m_parser.Return<Parser::put_async, Parser::setProperty, Parser::abort>(S_OK);
        m_parser.Return<Parser::selectSingleNode>(S_FALSE);
        m_parser.On<Parser::load>([this](VARIANT, VARIANT_BOOL* loaded) {
            *loaded = m_loaded;
            return m_loadResult;
        });
        // 1 while it loads, 4 when it has ended.
        m_parser.On<Parser::get_readyState>([this](long* state) {
            *state = m_questions++ < m_busyQuestions ? 1 : 4;
            return S_OK;
        });
        m_parser.On<Parser::get_parseError>([this](IXMLDOMParseError** error) {
            *error = reinterpret_cast<IXMLDOMParseError*>(m_error.Get());
            (*error)->AddRef();
            return S_OK;
        });
        m_error.On<ParseError::get_errorCode>([this](long* code) {
            *code = m_errorCode;
            return m_errorCode == 0 ? S_FALSE : S_OK;
        });
    }

    VARIANT_BOOL m_loaded = VARIANT_TRUE;
    HRESULT m_loadResult = S_OK;
    int m_questions = 0;
    int m_busyQuestions = 0;
    long m_errorCode = 0;

    CallList m_calls;
    FakeObject<Parser> m_parser{m_calls};
    FakeObject<ParseError> m_error{m_calls};
    std::optional<TestClass> m_class{std::in_place, ParserClass, TestClass::Gives(m_parser.Get())};
    XmlDocument m_document;
};

TEST_F(XmlLoading, IsPreparedWithXPathAndTheAsynchronousFlag) {
    EXPECT_EQ(m_document.Create(), S_OK);
    EXPECT_THAT(m_class->Asked(), ElementsAre(ParserInterface));
    EXPECT_THAT(m_calls, ElementsAre("Parser.setProperty(\"SelectionLanguage\", \"XPath\")",
                                     "Parser.put_async(1)"));
}

TEST_F(XmlLoading, GoesOnWithAParserThatKnowsItsOwnLanguageOnly) {
    FakeObject<Parser> old(m_calls, "Old");
    old.Answer(ParserInterface);
    old.Return<Parser::put_async>(S_OK);
    m_class.emplace(ParserClass, TestClass::Gives(old.Get()));
    XmlDocument document;
    EXPECT_EQ(document.Create(), S_OK);
    EXPECT_THAT(m_calls, ElementsAre("Old.put_async(1)"));
}

TEST_F(XmlLoading, SelectsOnlyWhenTheFileHasCompletelyArrived) {
    m_busyQuestions = 3;
    ASSERT_EQ(m_document.Create(), S_OK);
    m_calls.clear();
    EXPECT_TRUE(m_document.Load(L"C:\\a.xml"));
    m_document.SelectSingle(L"a/b");
    EXPECT_THAT(m_calls,
                ElementsAre("Parser.load(\"C:\\a.xml\")", "Parser.get_readyState()",
                            "Parser.get_readyState()", "Parser.get_readyState()",
                            "Parser.get_readyState()", "Parser.get_parseError()",
                            "ParseError.get_errorCode()", "Parser.selectSingleNode(\"a/b\")"));
}

TEST_F(XmlLoading, FailsForAFileThatTurnsOutMalformed) {
    m_busyQuestions = 1;
    m_errorCode = static_cast<long>(0xC00CE504);
    ASSERT_EQ(m_document.Create(), S_OK);
    EXPECT_FALSE(m_document.Load(L"C:\\a.xml"));
}

TEST_F(XmlLoading, FailsAtOnceWhenItCannotBegin) {
    const std::pair<HRESULT, VARIANT_BOOL> failures[] = {
        {E_FAIL, VARIANT_TRUE}, {S_FALSE, VARIANT_TRUE}, {S_OK, VARIANT_FALSE}};
    ASSERT_EQ(m_document.Create(), S_OK);
    for (const auto& [result, loaded] : failures) {
        m_loadResult = result;
        m_loaded = loaded;
        m_calls.clear();
        EXPECT_FALSE(m_document.Load(L"C:\\a.xml"));
        EXPECT_THAT(m_calls, ElementsAre("Parser.load(\"C:\\a.xml\")"));
    }
}

TEST_F(XmlLoading, IsGivenUpWhenItDoesNotEnd) {
    m_busyQuestions = 1'000'000;
    ASSERT_EQ(m_document.Create(), S_OK);
    EXPECT_FALSE(m_document.Load(L"C:\\a.xml", 50));
    EXPECT_EQ(m_calls.back(), "Parser.abort()");
}

TEST_F(XmlLoading, IsGivenUpWhenItsStateCannotBeRead) {
    m_parser.Return<Parser::get_readyState>(E_FAIL);
    ASSERT_EQ(m_document.Create(), S_OK);
    EXPECT_FALSE(m_document.Load(L"C:\\a.xml", 50));
    EXPECT_EQ(m_calls.back(), "Parser.abort()");
}

TEST_F(XmlLoading, SelectsNothingWhereTheParserHandsNothingOver) {
    ASSERT_EQ(m_document.Create(), S_OK);
    ASSERT_TRUE(m_document.Load(L"C:\\a.xml"));
    m_parser.Return<Parser::selectSingleNode>(S_OK);
    EXPECT_FALSE(m_document.SelectSingle(L"a/b"));
}

// ---- without a parser ----

class MissingParser : public SpecificationTest {
  protected:
    void ForEachMissingParser(const std::function<void()>& check) {
        for (const TestClass::Creation& creation :
             {TestClass::Fails(REGDB_E_CLASSNOTREG), TestClass::GivesNothing()}) {
            const TestClass missing(ParserClass, creation);
            check();
        }
    }
};

TEST_F(MissingParser, FailsTheDocument) {
    ForEachMissingParser([] {
        XmlDocument document;
        EXPECT_TRUE(FAILED(document.Create()));
        EXPECT_FALSE(document.Load(L"C:\\a.xml"));
        EXPECT_FALSE(document.SelectSingle(L"a"));
    });
}

TEST_F(MissingParser, FailsTheConfigurationByItsResultAlone) {
    const std::wstring path = m_data.Path(L"site.cfg");
    WriteFile(path, "<configuration/>");
    ForEachMissingParser(
        [&] { EXPECT_TRUE(FAILED(ReadConfiguration(path.c_str(), m_kernel.Get(), m_language))); });
    EXPECT_THAT(m_calls, testing::IsEmpty());
}

TEST_F(MissingParser, FailsTheSpecificationAsAnInvalidFile) {
    Describe("<configuration class=\"TEXT\"/>");
    ForEachMissingParser([this] {
        m_calls.clear();
        EXPECT_FALSE(Load());
        EXPECT_THAT(AllCalls(),
                    ElementsAre("LogError(\"Invalid specification cfg-file format: SPEC.cfg\")"));
    });
}

TEST_F(MissingParser, LeavesTheAxesTheirId) {
    Catalogue("<models><axes id=\"std\"><vrmlfile>wrong.wrl</vrmlfile></axes></models>");
    ForEachMissingParser([] { EXPECT_EQ(FindAxesModel(L"std"), L"std.wrl"); });
}

} // namespace
} // namespace zt::test
