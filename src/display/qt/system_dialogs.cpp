#include <QApplication>
#include <QCursor>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>

#include "display/qt/convert.h"
#include "display/qt/system.h"

namespace keelview {

namespace {

constexpr std::string_view OwnName = "Keelview";

class SystemDialogs : public Dialogs {
  public:
    void Ok(std::string_view text, std::string_view title) override {
        QMessageBox box(QMessageBox::NoIcon, TitleOf(title), {}, QMessageBox::Ok,
                        QApplication::activeWindow());
        Say(box, text);
    }

    bool YesNo(std::string_view text, std::string_view title) override {
        QMessageBox box(QMessageBox::Question, TitleOf(title), {}, QMessageBox::Yes | QMessageBox::No,
                        QApplication::activeWindow());
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        return Say(box, text) == QMessageBox::Yes;
    }

    std::optional<std::string> Input(std::string_view prompt, std::string_view title,
                                     std::string_view proposal) override {
        bool taken = false;
        const QString answer =
            QInputDialog::getText(QApplication::activeWindow(), TitleOf(title), ToQt(prompt),
                                  QLineEdit::Normal, ToQt(proposal), &taken);
        if (!taken) return std::nullopt;
        return FromQt(answer);
    }

    std::optional<std::size_t> Choose(const std::vector<std::string>& entries) override {
        QMenu menu(QApplication::activeWindow());
        for (const std::string& entry : entries) menu.addAction(ToQt(entry).replace('&', "&&"));
        const auto chosen = menu.actions().indexOf(menu.exec(QCursor::pos()));
        if (chosen < 0) return std::nullopt;
        return static_cast<std::size_t>(chosen);
    }

  private:
    static QString TitleOf(std::string_view title) { return ToQt(title.empty() ? OwnName : title); }

    static int Say(QMessageBox& box, std::string_view text) {
        box.setTextFormat(Qt::PlainText);
        box.setText(ToQt(text));
        return box.exec();
    }
};

}  // namespace

std::unique_ptr<Dialogs> MakeDialogs() {
    return std::make_unique<SystemDialogs>();
}

}  // namespace keelview
