#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zt {
namespace {

CommandLine Parse(const std::vector<std::wstring_view>& arguments) {
    return ParseCommandLine(arguments);
}

TEST(CommandLine, IsEmptyWithoutArguments) {
    const CommandLine line = Parse({});
    for (const auto& text : {line.projectFile, line.exchangePath, line.logFile, line.statusId,
                             line.editProgId, line.editMethod, line.newProjectName, line.document})
        EXPECT_EQ(text, L"");
    for (const bool flag :
         {line.notify, line.package, line.publish, line.updateDocument, line.newRevision})
        EXPECT_FALSE(flag);
    EXPECT_TRUE(line.metadata.empty());
}

struct TextKeyword {
    const wchar_t* keyword;
    std::wstring CommandLine::*value;
};

class CommandLineText : public testing::TestWithParam<TextKeyword> {};

TEST_P(CommandLineText, TakesTheNextArgument) {
    const CommandLine line = Parse({GetParam().keyword, L"some value"});
    EXPECT_EQ(line.*GetParam().value, L"some value");
}

TEST_P(CommandLineText, IsTheLastOneGiven) {
    const CommandLine line = Parse({GetParam().keyword, L"first", GetParam().keyword, L"second"});
    EXPECT_EQ(line.*GetParam().value, L"second");
}

TEST_P(CommandLineText, IsEmptyWhenNothingFollows) {
    const CommandLine line = Parse({L"-S", GetParam().keyword});
    EXPECT_EQ(line.*GetParam().value, L"");
    EXPECT_TRUE(line.notify);
}

TEST_P(CommandLineText, TakesAKeywordAsItsValue) {
    const CommandLine line = Parse({GetParam().keyword, L"-S"});
    EXPECT_EQ(line.*GetParam().value, L"-S");
    EXPECT_FALSE(line.notify);
}

TEST_P(CommandLineText, IsTakenAsItStands) {
    const CommandLine line = Parse({GetParam().keyword, L" \t/a \"b\" %s \x0416 "});
    EXPECT_EQ(line.*GetParam().value, L" \t/a \"b\" %s \x0416 ");
}

INSTANTIATE_TEST_SUITE_P(Keywords, CommandLineText,
                         testing::Values(TextKeyword{L"-IN", &CommandLine::projectFile},
                                         TextKeyword{L"-EXCHANGEPATH", &CommandLine::exchangePath},
                                         TextKeyword{L"-LOG", &CommandLine::logFile},
                                         TextKeyword{L"-M", &CommandLine::statusId},
                                         TextKeyword{L"-PROJECTNAME", &CommandLine::newProjectName},
                                         TextKeyword{L"-DM", &CommandLine::document}));

struct FlagKeyword {
    const wchar_t* keyword;
    std::vector<bool CommandLine::*> flags;
};

class CommandLineFlag : public testing::TestWithParam<FlagKeyword> {
  protected:
    static constexpr bool CommandLine::*All[] = {
        &CommandLine::notify, &CommandLine::package, &CommandLine::publish,
        &CommandLine::updateDocument, &CommandLine::newRevision};

    static void ExpectOnlyItsFlags(const CommandLine& line) {
        for (const auto flag : All) {
            bool expected = false;
            for (const auto own : GetParam().flags)
                expected = expected || own == flag;
            EXPECT_EQ(line.*flag, expected);
        }
    }
};

TEST_P(CommandLineFlag, SetsItsOwnFlagsOnly) {
    ExpectOnlyItsFlags(Parse({GetParam().keyword}));
}

TEST_P(CommandLineFlag, HasNoFurtherEffectWhenRepeated) {
    ExpectOnlyItsFlags(Parse({GetParam().keyword, GetParam().keyword}));
}

TEST_P(CommandLineFlag, TakesNoValue) {
    EXPECT_EQ(Parse({GetParam().keyword, L"-IN", L"P"}).projectFile, L"P");
}

INSTANTIATE_TEST_SUITE_P(
    Keywords, CommandLineFlag,
    testing::Values(FlagKeyword{L"-S", {&CommandLine::notify}},
                    FlagKeyword{L"-KVB", {&CommandLine::publish, &CommandLine::package}},
                    FlagKeyword{L"-PUB", {&CommandLine::publish}},
                    FlagKeyword{L"-UPDATEDOC", {&CommandLine::updateDocument}},
                    FlagKeyword{L"-NR", {&CommandLine::newRevision}}));

TEST(CommandLine, TakesBothPrefixes) {
    EXPECT_EQ(Parse({L"/IN", L"P"}).projectFile, L"P");
    EXPECT_EQ(Parse({L"-IN", L"P"}).projectFile, L"P");
}

TEST(CommandLine, IgnoresTheCaseOfKeywords) {
    EXPECT_EQ(Parse({L"-in", L"c:\\x\\y\\Proj.zip"}).projectFile, L"c:\\x\\y\\Proj.zip");
    EXPECT_TRUE(Parse({L"/uPdAtEdOc"}).updateDocument);
}

TEST(CommandLine, IgnoresWhiteSpaceBeforeAKeyword) {
    EXPECT_TRUE(Parse({L" \t\r\n-S"}).notify);
}

TEST(CommandLine, SkipsWhatIsNoKeyword) {
    for (const wchar_t* argument :
         {L"", L"   ", L"-", L"/", L"S", L"--S", L"-/S", L"-S ", L"- S", L"-SS", L"\\S", L"\x2013S",
          L"-IN=P", L"-\x017F" /* long s */, L"-NOTHING"}) {
        const CommandLine line = Parse({argument, L"-PUB"});
        EXPECT_FALSE(line.notify);
        EXPECT_EQ(line.projectFile, L"");
        EXPECT_TRUE(line.publish) << "the keyword behind the argument";
    }
}

TEST(CommandLine, ExaminesTheValueOfAnUnknownKeywordAsAnArgument) {
    EXPECT_TRUE(Parse({L"-NOTHING", L"-S"}).notify);
}

TEST(CommandLine, TakesBothValuesOfAnEditHandler) {
    const CommandLine line = Parse({L"-EDIT", L"Some.Handler", L"-NR", L"-S"});
    EXPECT_EQ(line.editProgId, L"Some.Handler");
    EXPECT_EQ(line.editMethod, L"-NR");
    EXPECT_FALSE(line.newRevision);
    EXPECT_TRUE(line.notify);
}

TEST(CommandLine, KeepsTheLastEditHandler) {
    const CommandLine line = Parse({L"-EDIT", L"A", L"B", L"-EDIT", L"C", L"D"});
    EXPECT_EQ(line.editProgId, L"C");
    EXPECT_EQ(line.editMethod, L"D");
}

TEST(CommandLine, IgnoresAnEditHandlerWithOneArgumentLeft) {
    const CommandLine line = Parse({L"-IN", L"P", L"-EDIT", L"Some.Handler"});
    EXPECT_EQ(line.editProgId, L"");
    EXPECT_EQ(line.editMethod, L"");
}

TEST(CommandLine, ExaminesTheArgumentThatWasTooFewAsAKeyword) {
    EXPECT_TRUE(Parse({L"-EDIT", L"-NR"}).newRevision);
    EXPECT_TRUE(Parse({L"-META", L"-S"}).notify);
    EXPECT_TRUE(Parse({L"-ADDMETA", L"-S"}).notify);
}

struct Entry {
    const wchar_t* name;
    const wchar_t* value;
    bool set;
};

void ExpectMetadata(const MetadataMap& metadata, const std::vector<Entry>& expected) {
    ASSERT_EQ(metadata.size(), expected.size());
    auto entry = metadata.begin();
    for (const Entry& wanted : expected) {
        EXPECT_EQ(entry->first, wanted.name);
        EXPECT_EQ(entry->second.value, wanted.value);
        EXPECT_EQ(entry->second.bSet, wanted.set);
        ++entry;
    }
}

TEST(CommandLine, DistinguishesMetadataToSetFromMetadataToAdd) {
    const CommandLine line = Parse({L"-META", L"Title", L"A", L"-ADDMETA", L"Author", L"B"});
    ExpectMetadata(line.metadata, {{L"Author", L"B", false}, {L"Title", L"A", true}});
}

TEST(CommandLine, KeepsTheFirstPairOfAMetadataName) {
    ExpectMetadata(Parse({L"-META", L"Title", L"A", L"-META", L"Title", L"B"}).metadata,
                   {{L"Title", L"A", true}});
    ExpectMetadata(Parse({L"-ADDMETA", L"Title", L"A", L"-META", L"Title", L"B"}).metadata,
                   {{L"Title", L"A", false}});
    ExpectMetadata(Parse({L"-META", L"Title", L"A", L"-ADDMETA", L"Title", L"B"}).metadata,
                   {{L"Title", L"A", true}});
}

TEST(CommandLine, OrdersMetadataByTheCodesOfTheirNames) {
    const CommandLine line =
        Parse({L"-META", L"title", L"1", L"-META", L"\xFFFD", L"2", L"-META", L"\x00C4", L"3",
               L"-META", L"Title", L"4", L"-META", L"Tit", L"5", L"-META", L"", L"6"});
    ExpectMetadata(line.metadata, {{L"", L"6", true},
                                   {L"Tit", L"5", true},
                                   {L"Title", L"4", true},
                                   {L"title", L"1", true},
                                   {L"\x00C4", L"3", true},
                                   {L"\xFFFD", L"2", true}});
}

TEST(CommandLine, TakesMetadataAsTheyStand) {
    ExpectMetadata(Parse({L"-META", L" -S", L""}).metadata, {{L" -S", L"", true}});
}

TEST(CommandLine, HasNoLimitOfLength) {
    const std::wstring value(30000, L'x');
    EXPECT_EQ(Parse({L"-META", L"Title", value}).metadata.at(L"Title").value, value);
}

TEST(ProjectWork, IsNoneForARunThatAsksForNothing) {
    EXPECT_FALSE(HasProjectWork(Parse({L"-IN", L"c:\\x\\P.zip", L"-S", L"-M", L"1"})));
}

TEST(ProjectWork, IsNoneForADocumentUpdateOrANewRevisionAlone) {
    EXPECT_FALSE(HasProjectWork(Parse({L"-UPDATEDOC"})));
    EXPECT_FALSE(HasProjectWork(Parse({L"-NR"})));
    EXPECT_FALSE(HasProjectWork(Parse({L"-UPDATEDOC", L"-NR"})));
}

TEST(ProjectWork, IsNoneForEmptyValues) {
    EXPECT_FALSE(HasProjectWork(Parse({L"-DM", L"", L"-PROJECTNAME", L""})));
    EXPECT_FALSE(HasProjectWork(Parse({L"-EDIT", L"", L"Method"})));
    EXPECT_FALSE(HasProjectWork(Parse({L"-EDIT", L"Some.Handler", L""})));
}

TEST(ProjectWork, IsThereForEachKindOfChange) {
    EXPECT_TRUE(HasProjectWork(Parse({L"-PUB"})));
    EXPECT_TRUE(HasProjectWork(Parse({L"-KVB"})));
    EXPECT_TRUE(HasProjectWork(Parse({L"-META", L"Title", L""})));
    EXPECT_TRUE(HasProjectWork(Parse({L"-ADDMETA", L"Title", L"A"})));
    EXPECT_TRUE(HasProjectWork(Parse({L"-EDIT", L"Some.Handler", L"Method"})));
    EXPECT_TRUE(HasProjectWork(Parse({L"-DM", L"a.xml"})));
    EXPECT_TRUE(HasProjectWork(Parse({L"-PROJECTNAME", L"New"})));
}

struct Located {
    const wchar_t* projectFile;
    bool hasFolder;
    const wchar_t* folder;
    const wchar_t* name;
};

class ProjectLocationOf : public testing::TestWithParam<Located> {};

TEST_P(ProjectLocationOf, IsFolderAndBareName) {
    const ProjectLocation location = LocateProject(GetParam().projectFile);
    EXPECT_EQ(location.hasFolder, GetParam().hasFolder);
    EXPECT_EQ(location.folder, GetParam().folder);
    EXPECT_EQ(location.name, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ProjectLocationOf,
    testing::Values(
        Located{L"c:\\x\\y\\Proj.zip", true, L"c:\\x\\y", L"Proj"},
        Located{L"Proj.zip", false, L"", L"Proj"}, Located{L"Proj", false, L"", L"Proj"},
        Located{L"c:\\a.b\\Proj", true, L"c:\\a.b", L"Proj"},
        Located{L"c:\\x\\Proj.rev2.zip", true, L"c:\\x", L"Proj.rev2"},
        Located{L"c:\\Proj.zip", true, L"c:", L"Proj"}, Located{L"\\Proj.zip", true, L"", L"Proj"},
        Located{L"c:\\x\\", true, L"c:\\x", L""}, Located{L"c:\\x\\.zip", true, L"c:\\x", L""},
        Located{L"c:\\x\\Proj.", true, L"c:\\x", L"Proj"},
        Located{L"c:\\x\\\\Proj.zip", true, L"c:\\x\\", L"Proj"},
        Located{L"c:/x/Proj.zip", false, L"", L"c:/x/Proj"}, Located{L"", false, L"", L""}));

struct Echo {
    const wchar_t* whole;
    const wchar_t* arguments;
};

class CommandLineEcho : public testing::TestWithParam<Echo> {};

TEST_P(CommandLineEcho, IsWhatStandsBehindTheProgram) {
    EXPECT_EQ(ArgumentsOf(GetParam().whole), GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, CommandLineEcho,
    testing::Values(Echo{L"\"c:\\Program Files\\Z.exe\" -IN \"a b\"", L" -IN \"a b\""},
                    Echo{L"Z.exe -IN P  -S ", L" -IN P  -S "},
                    Echo{L"c:\\Program Files\\Z.exe -S", L" Files\\Z.exe -S"},
                    Echo{L"\"Z.exe\"", L""}, Echo{L"\"Z.exe\"-S", L"-S"}, Echo{L"\"\" -S", L" -S"},
                    Echo{L"Z.exe", L""}, Echo{L"\"Z.exe -S", L""}, Echo{L"\"", L""}, Echo{L"", L""},
                    Echo{L" -S", L" -S"}, Echo{L"Z.exe\t-IN P", L" P"},
                    Echo{L"\"Z\".exe -S", L".exe -S"}));

} // namespace
} // namespace zt
