#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <array>

#include "display/qt/convert.h"
#include "display/qt/system.h"

namespace keelview {

namespace {

constexpr std::string_view OwnName = "Keelview";

/// A word of the toolkit in the program's language, whatever language the desktop speaks.
QString Word(const char* english) {
    return QCoreApplication::translate("QPlatformTheme", english);
}

class SystemDialogs : public Dialogs {
  public:
    void Ok(std::string_view text, std::string_view title) override {
        QMessageBox box(QMessageBox::NoIcon, TitleOf(title), {}, QMessageBox::Ok, AskingWindow());
        Say(box, text);
    }

    bool YesNo(std::string_view text, std::string_view title) override {
        return Ask(text, title, QMessageBox::Yes);
    }

    bool Confirm(std::string_view text, std::string_view title) override {
        return Ask(text, title, QMessageBox::No);
    }

    std::optional<std::string> Input(std::string_view prompt, std::string_view title,
                                     std::string_view proposal) override {
        QInputDialog box(AskingWindow());
        box.setWindowTitle(TitleOf(title));
        box.setLabelText(ToQt(prompt));
        box.setTextValue(ToQt(proposal));
        box.setOkButtonText(Word("OK"));
        box.setCancelButtonText(Word("Cancel"));
        if (box.exec() != QDialog::Accepted) return std::nullopt;
        return FromQt(box.textValue());
    }

    std::optional<std::size_t> Choose(const std::vector<std::string>& entries) override {
        QMenu menu(AskingWindow());
        for (const std::string& entry : entries) menu.addAction(ToQt(entry).replace('&', "&&"));
        const auto chosen = menu.actions().indexOf(menu.exec(QCursor::pos()));
        if (chosen < 0) return std::nullopt;
        return static_cast<std::size_t>(chosen);
    }

    std::vector<std::filesystem::path> ChooseFiles(std::string_view title,
                                                   const std::filesystem::path& folder,
                                                   const std::vector<std::string>& patterns) override {
        QFileDialog box(AskingWindow(), TitleOf(title), QString::fromStdU16String(folder.u16string()));
        box.setFileMode(QFileDialog::ExistingFiles);
        box.setOption(QFileDialog::ReadOnly);
        box.setLabelText(QFileDialog::Accept, Word("OK"));
        box.setLabelText(QFileDialog::Reject, Word("Cancel"));
        if (!patterns.empty()) {
            QStringList names;
            for (const std::string& pattern : patterns) names += {ToQt(pattern), ToQt(pattern).toUpper()};
            names.removeDuplicates();
            box.setNameFilters({names.join(' ').prepend('(').append(')'), "(*)"});
        }
        if (box.exec() != QDialog::Accepted) return {};
        std::vector<std::filesystem::path> files;
        for (const QString& file : box.selectedFiles()) files.emplace_back(file.toStdU16String());
        std::ranges::sort(files);
        return files;
    }

  private:
    static QString TitleOf(std::string_view title) { return ToQt(title.empty() ? OwnName : title); }

    static bool Ask(std::string_view text, std::string_view title, QMessageBox::StandardButton atOnce) {
        QMessageBox box(QMessageBox::Question, TitleOf(title), {}, QMessageBox::Yes | QMessageBox::No,
                        AskingWindow());
        box.setDefaultButton(atOnce);
        box.setEscapeButton(QMessageBox::No);
        return Say(box, text) == QMessageBox::Yes;
    }

    static int Say(QMessageBox& box, std::string_view text) {
        box.setTextFormat(Qt::PlainText);
        box.setText(ToQt(text));
        constexpr std::array Words{std::pair{QMessageBox::Ok, "OK"}, std::pair{QMessageBox::Yes, "&Yes"},
                                   std::pair{QMessageBox::No, "&No"}};
        for (const auto& [button, word] : Words)
            if (QAbstractButton* shown = box.button(button)) shown->setText(Word(word));
        return box.exec();
    }
};

}  // namespace

QWidget* AskingWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::ranges::find_if(windows, &QWidget::isVisible);
    return shown == windows.end() ? nullptr : *shown;
}

std::unique_ptr<Dialogs> MakeDialogs() {
    return std::make_unique<SystemDialogs>();
}

}  // namespace keelview
