#pragma once

#include <windows.h>
#include <oleidl.h>

// The frame that a control finds around its site: the container's window, with no menu, no status
// line, no tools and no accelerators of its own. Lives on the heap; a control may keep it longer
// than the container exists.
class InPlaceFrame final : public IOleInPlaceFrame {
  public:
    explicit InPlaceFrame(HWND window) : m_window(window) {}

    // The container's window is destroyed.
    void Detach() { m_window = nullptr; }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    // IOleWindow
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;

    // IOleInPlaceUIWindow
    HRESULT STDMETHODCALLTYPE GetBorder(RECT* border) override;
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object,
                                              const wchar_t* name) override;

    // IOleInPlaceFrame
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU shared, OLEMENUGROUPWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU shared, HOLEMENU menu, HWND object) override;
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU shared) override;
    HRESULT STDMETHODCALLTYPE SetStatusText(const wchar_t* text) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, WORD id) override;

  private:
    ~InPlaceFrame() = default;

    ULONG m_references = 1;
    HWND m_window;
};
