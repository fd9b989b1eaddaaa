#include "display/form.h"

#include <memory>

#include "display/web/form_events.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"

namespace keelview {

namespace {

/// The window of a form: the page, which has one at a time.
struct PageWindow : NativeControl, FormEvents {
    explicit PageWindow(std::string_view name) : NativeControl(ControlKind::Window, name, nullptr) {}

    Form& TheForm() const { return *static_cast<Form*>(Owner); }

    void OnResized() override {
        TakeSize();
        if (!Closed) Fire(TheForm().OnResize);
    }
    void OnKeyDown(int key) override { Fire(TheForm().OnKeyDown, key); }
    void OnKeyUp(int key) override { Fire(TheForm().OnKeyUp, key); }
    bool OnNamedKey(const KeyPress& key) override {
        bool taken = false;
        Fire(TheForm().OnKey, key, taken);
        return taken;
    }
    void TakeSize() {
        Width = static_cast<int>(page::PageWindowSize(false));
        Height = static_cast<int>(page::PageWindowSize(true));
    }

    bool Closed = true;
};

PageWindow& WindowOf(const NativeControl& native) {
    return const_cast<PageWindow&>(static_cast<const PageWindow&>(native));
}

}  // namespace

// The window is the page, whatever its kind and the size that it asks for.
Form::Form(std::string_view name, Kind /*kind*/, double /*width*/, double /*height*/)
    : Container(std::make_unique<PageWindow>(name)) {
    PageWindow& window = WindowOf(Native());
    window.TakeSize();
    page::PageWindow(static_cast<FormEvents*>(&window));
}

Form::~Form() {
    page::PageWindow(nullptr);
}

void Form::SetCaption(std::string_view caption) {
    if (Native().Words == caption) return;
    Native().Words = caption;
    page::PageTitle(caption.data(), caption.size());
}

std::string Form::Caption() const {
    return Native().Words;
}

// The page has an icon of its own, or none.
void Form::SetIcon(const Picture& /*icon*/) {}

double Form::ScaleWidth() const {
    return Native().Width;
}

double Form::ScaleHeight() const {
    return Native().Height;
}

void Form::ShowNow() {
    WindowOf(Native()).Closed = false;
}

// Nothing can be waited for in a page, so a form that asks stands there until it is closed.
void Form::ShowModal() {
    ShowNow();
}

void Form::Refresh() {}

void Form::Close() {
    PageWindow& window = WindowOf(Native());
    if (window.Closed) return;
    bool keptOpen = false;
    Fire(OnQueryUnload, keptOpen);
    if (keptOpen) return;
    window.Closed = true;
    Fire(OnUnload);
}

bool Form::Closed() const {
    return WindowOf(Native()).Closed;
}

void Form::SetWholeScreen(bool whole) {
    page::PageWholeScreen(whole);
}

bool Form::WholeScreen() const {
    return page::PageIsWholeScreen();
}

// Return pushes the button that has the keyboard, as in all pages.
void Form::SetAnswers(Button& /*accept*/, Button& /*cancel*/) {}

}  // namespace keelview
