#pragma once

#include <QTranslator>

namespace keelview {

/// The words that the toolkit writes by itself, in Japanese: on the buttons of its boxes, in the menus of
/// fields and scroll bars. They stand here and not in a catalogue of the toolkit, so that they are there
/// wherever the program is.
class JapaneseWords : public QTranslator {
  public:
    bool isEmpty() const override { return false; }
    /// The word for an English one, whatever part of the toolkit asks; nothing, which leaves the English
    /// one, where there is none.
    QString translate(const char* context, const char* source, const char* remark,
                      int count) const override;
};

}  // namespace keelview
