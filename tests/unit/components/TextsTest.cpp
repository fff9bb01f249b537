#include "components/Values.h"

#include "framework/Exceptions.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

TEST(MakeText, KeepsEveryCharacter) {
    const std::wstring text(L"a\0b\x00E4\x4E2D", 5);
    const _bstr_t made = MakeText(text);
    EXPECT_EQ(std::wstring(made, made.length()), text);
}

TEST(MakeText, OfAnEmptyTextIsNotNull) {
    EXPECT_NE(Borrow(MakeText(L"")), nullptr);
    EXPECT_NE(Borrow(MakeText("")), nullptr);
    EXPECT_EQ(MakeText(L"").length(), 0u);
}

TEST(MakeText, OfANarrowTextReadsTheThreadsAnsiCodePage) {
    EXPECT_STREQ(MakeText("ZeltorAuthor_Invisible"), L"ZeltorAuthor_Invisible");
    wchar_t expected[8] = {};
    MultiByteToWideChar(CP_THREAD_ACP, 0, "\xE4", 1, expected, 8);
    EXPECT_STREQ(MakeText("\xE4"), expected);
}

template <typename Text>
bool RaisesTheMemoryException(Text text) {
    try {
        MakeText(text);
        return false;
    } catch (CMemoryException* failure) {
        failure->Delete();
        return true;
    }
}

// Texts so long that there cannot be room for them; the characters themselves are not read.
// NOLINTBEGIN(bugprone-string-constructor): lengths beyond the text are the point.
TEST(MakeText, RaisesTheMemoryExceptionWithoutRoom) {
    EXPECT_TRUE(RaisesTheMemoryException(std::wstring_view(L"x", 0x7FFFFFFF)));
    EXPECT_TRUE(RaisesTheMemoryException(std::wstring_view(L"x", 0x100000001)));
    EXPECT_TRUE(RaisesTheMemoryException(std::string_view("x", 0x80000000)));
}
// NOLINTEND(bugprone-string-constructor)

TEST(Borrow, GivesTheHoldersOwnStringOrNull) {
    const _bstr_t text(L"text");
    EXPECT_EQ(Borrow(text), static_cast<const wchar_t*>(text));
    EXPECT_EQ(Borrow(_bstr_t()), nullptr);
}

TEST(OrEmpty, NeverGivesNull) {
    EXPECT_STREQ(OrEmpty(_bstr_t()), L"");
    EXPECT_STREQ(OrEmpty(_bstr_t(L"")), L"");
    EXPECT_STREQ(OrEmpty(_bstr_t(L"text")), L"text");
}

} // namespace
// Counts the blocks of the platform's allocator that live.
class BlockCounter final : public IMallocSpy {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
    void* STDMETHODCALLTYPE PostAlloc(void* block) override {
        ++living;
        return block;
    }
    void* STDMETHODCALLTYPE PreFree(void* block, BOOL) override {
        living -= block != nullptr ? 1 : 0;
        return block;
    }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** given, BOOL) override {
        *given = block;
        return size;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
    void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int actual) override { return actual; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

    int living = 0;
};

TEST(MadeText, IsFreedWithItsOwner) {
    // The platform keeps freed texts for a while unless told not to.
    const auto noCache = reinterpret_cast<void(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache")));
    ASSERT_NE(noCache, nullptr);
    noCache();
    static BlockCounter blocks;
    ASSERT_EQ(CoRegisterMallocSpy(&blocks), S_OK);
    { const _bstr_t text = MakeText(std::wstring_view(L"Pump")); }
    CoRevokeMallocSpy();
    EXPECT_EQ(blocks.living, 0);
}

} // namespace zt::test
