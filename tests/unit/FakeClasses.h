// Component classes of the test's own: no registry is touched, so tests may run side by side.
#pragma once

#include <windows.h>
#include <unknwn.h>

#include <functional>
#include <string>
#include <vector>

namespace zt::test {

// Makes one object, as IClassFactory::CreateInstance does.
using ClassMaker = std::function<HRESULT(IUnknown* outer, REFIID iid, void** object)>;

// Hands out an object that the test owns.
ClassMaker Hand(IUnknown* object);
// Fails, or succeeds without an object.
ClassMaker Refuse(HRESULT result);

struct FakeClass {
    CLSID id;
    std::wstring progId; // empty: known by its id only
    ClassMaker make;
};

// While it lives, this process finds the classes before all that is registered: an activation
// context says that the test program itself is their server. One at a time.
class FakeClasses {
  public:
    explicit FakeClasses(std::vector<FakeClass> classes);
    ~FakeClasses();
    FakeClasses(const FakeClasses&) = delete;
    FakeClasses& operator=(const FakeClasses&) = delete;

  private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

} // namespace zt::test
