#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>

#include "distribution/distribution_form.h"
#include "editor/race_editor.h"
#include "session/documents.h"
#include "shell/cover.h"
#include "shell/reference_viewer.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

/// Kana, Chinese signs and full-width ones.
bool HoldsJapanese(const QString& text) {
    return std::ranges::any_of(text, [](QChar letter) { return letter.unicode() >= 0x3000; });
}

/// What no compiler sees: texts put together, and those without a Text of their own.
struct EnglishTest : testing::Test, TestDesk {
    static void ExpectEnglish(const Control& form) {
        const QWidget& window = driver::Face(form);
        QList<const QWidget*> parts{&window};
        for (const QWidget* part : window.findChildren<QWidget*>()) parts.append(part);
        for (const QWidget* part : parts)
            for (const char* name : {"text", "windowTitle", "toolTip", "accessibleName", "plainText"})
                EXPECT_FALSE(HoldsJapanese(part->property(name).toString()))
                    << part->objectName().toStdString() << part->property(name).toString().toStdString();
    }
};

TEST_F(EnglishTest, NoFormOfTheEnglishProgramShowsJapanese) {
    for (const bool edit : {true, false}) {
        Open(edit);
        ExpectEnglish(Form());
    }
    app.settings.EditMode = true;
    Cover menu(app.settings, app.race, services, {});
    menu.ShowNow();
    for (const Button* button : {&menu.Command1, &menu.Command2, &menu.Command3, &menu.Command4,
                                 &menu.Command7, &menu.Command8, &menu.Command9}) {
        driver::MoveTo(*button, {5, 5});
        EXPECT_TRUE(menu.Text1.Visible() && !menu.Text1.Text().empty());
        ExpectEnglish(menu);
    }
    ExpectEnglish(RaceEditor(app.settings, app.race, services, [] {}));
    ExpectEnglish(DistributionForm(app.settings, services));
    ExpectEnglish(ReferenceViewer(app.settings, app.race, services));
}

TEST_F(EnglishTest, NorDoesWhatItSaysOfADocumentThatDoesNotOpen) {
    for (const int result : {0, 1, 2, 3, 5, 11, 27, 31, 32}) {
        platform.DocumentResult = result;
        dialogs.AnswerOk();
        EXPECT_FALSE(OpenDocument(app.settings, services, "notice.pdf"));
        EXPECT_FALSE(HoldsJapanese(QString::fromStdString(Said()))) << Said();
    }
}

}  // namespace
}  // namespace keelview
