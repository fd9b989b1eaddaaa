#pragma once

#include <initializer_list>

#include "base/bilingual.h"
#include "display/control.h"

namespace keelview {

/// A text that is the same in both languages.
consteval Text Both(std::string_view words) {
    return {words, words};
}

/// One control of a form with its place in its parent, its caption, or both.
class FormEntry {
  public:
    struct Place {
        double Left = 0.0;
        double Top = 0.0;
        double Width = 0.0;
        double Height = 0.0;
    };

    FormEntry(Control& control, const Place& place) : control_(control), place_(place) {}
    template <class Captioned>
    FormEntry(Captioned& control, const Place& place, const Text& caption)
        : control_(control), place_(place), caption_(caption), setCaption_(&SetCaptionOf<Captioned>) {}
    template <class Captioned>
    FormEntry(Captioned& control, const Text& caption)
        : control_(control), caption_(caption), setCaption_(&SetCaptionOf<Captioned>) {}

    void Apply(bool useEnglish) const {
        if (place_.Width > 0) control_.Move(place_.Left, place_.Top, place_.Width, place_.Height);
        if (setCaption_ != nullptr) setCaption_(control_, caption_.In(useEnglish));
    }

  private:
    template <class Captioned>
    static void SetCaptionOf(Control& control, std::string_view caption) {
        static_cast<Captioned&>(control).SetCaption(caption);
    }

    Control& control_;
    Place place_;  // without a width where the control is placed elsewhere
    Text caption_;
    void (*setCaption_)(Control&, std::string_view) = nullptr;
};

/// Places the controls of a form and writes their captions in its language.
inline void ApplyTable(std::initializer_list<FormEntry> entries, bool useEnglish) {
    for (const FormEntry& entry : entries) entry.Apply(useEnglish);
}

}  // namespace keelview
