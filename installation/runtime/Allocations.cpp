#include "installation/runtime/Allocations.h"

#include "installation/runtime/Environment.h"
#include "installation/runtime/Trace.h"

#include <windows.h>
#include <objbase.h>
#include <objidl.h>

#include <array>
#include <map>
#include <mutex>
#include <string>

namespace devinst {

namespace {

// The platform's automation library keeps freed strings for a while, unless this variable is set
// when it is loaded; the starter of the program sets it.
constexpr const wchar_t* AutomationLibrary = L"oleaut32.dll";

// How far behind the spy the automation library may stand.
constexpr ULONG FramesLookedAt = 8;

// Lives until the process ends: it is called until then.
class AllocationSpy final : public IMallocSpy {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IMallocSpy;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override {
        m_size = size;
        return size;
    }
    void* STDMETHODCALLTYPE PostAlloc(void* block) override {
        if (block != nullptr && IsForAutomation())
            Note(block);
        return block;
    }
    void* STDMETHODCALLTYPE PreFree(void* block, BOOL) override {
        Forget(block);
        return block;
    }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** given, BOOL) override {
        m_size = size;
        m_moved = Forget(block);
        *given = block;
        return size;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override {
        if (block != nullptr && m_moved)
            Note(block);
        return block;
    }
    void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int did) override { return did; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

    std::string Told() {
        const std::lock_guard lock(m_mutex);
        std::string sizes;
        int shown = 0;
        for (const auto& [block, size] : m_blocks) {
            if (++shown <= 5)
                sizes += (shown == 1 ? "" : ", ") + std::to_string(size) + " bytes";
        }
        return std::to_string(m_blocks.size()) + (sizes.empty() ? "" : " (" + sizes + ")");
    }

  private:
    // Other users of the same allocator, COM itself among them, keep what they need to the end.
    static bool IsForAutomation() {
        static const HMODULE library = GetModuleHandleW(AutomationLibrary);
        std::array<void*, FramesLookedAt> frames = {};
        const USHORT count = RtlCaptureStackBackTrace(1, FramesLookedAt, frames.data(), nullptr);
        for (USHORT i = 0; i < count; ++i) {
            void* module = nullptr;
            RtlPcToFileHeader(frames[i], &module);
            if (module == library)
                return true;
        }
        return false;
    }

    void Note(void* block) {
        const std::lock_guard lock(m_mutex);
        m_blocks[block] = m_size;
    }

    bool Forget(void* block) {
        const std::lock_guard lock(m_mutex);
        return m_blocks.erase(block) != 0;
    }

    std::mutex m_mutex;
    std::map<void*, SIZE_T> m_blocks;
    SIZE_T m_size = 0; // between a Pre and its Post, which the allocator's lock keeps together
    bool m_moved = false;
};

AllocationSpy* theSpy = nullptr;

} // namespace

void StartCountingAllocations() {
    if (EnvironmentText(L"ZT_ALLOCATIONS").empty())
        return;
    auto* const spy = new AllocationSpy;
    if (SUCCEEDED(CoRegisterMallocSpy(spy)))
        theSpy = spy;
    else
        delete spy;
}

void TraceAllocations() {
    if (theSpy != nullptr)
        TraceLine("allocations: " + theSpy->Told());
}

} // namespace devinst
