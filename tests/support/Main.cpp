// Entry of every Windows test program: the program under test is built for a wide-character entry.
#include <gmock/gmock.h>

#include <objbase.h>

int wmain(int count, wchar_t** arguments) {
    CoInitialize(nullptr);
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
