// Component classes of the test process's own: nothing is written to the registry, and no other
// process sees them.
#pragma once

#include <windows.h>
#include <objbase.h>

#include <functional>
#include <memory>
#include <vector>

namespace zt::test {

// A class whose creation the test answers, for as long as this object lives.
class TestClass {
  public:
    // How CreateInstance answers. outer and iid are the caller's; *object is null before the call.
    using Creation = std::function<HRESULT(IUnknown* outer, REFIID iid, void** object)>;

    // Known by its identifier.
    TestClass(REFCLSID id, Creation creation);
    // Known by its ProgID, through an activation context that the thread has active.
    TestClass(const wchar_t* progId, Creation creation);
    ~TestClass();
    TestClass(const TestClass&) = delete;
    TestClass& operator=(const TestClass&) = delete;

    // The interfaces that creations have asked for so far.
    const std::vector<IID>& Asked() const;

    // Gives the object, through its QueryInterface.
    static Creation Gives(IUnknown* object);
    static Creation Fails(HRESULT result);
    // Success without an object.
    static Creation GivesNothing();

  private:
    class Factory;
    std::unique_ptr<Factory> m_factory;
    DWORD m_cookie = 0;
};

} // namespace zt::test
