#include "import/wind_sheet.h"

#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "analysis/plan_names.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "display/platform.h"
#include "racedata/race_control.h"

namespace keelview {

namespace {

constexpr int EmptyRows = 30;  // to type into
constexpr std::uintmax_t LargestTable = 64U << 20U;

QString Qt8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

WindSheet::WindSheet(const Settings& settings, Services& services)
    : settings_(settings), services_(services), voice_(settings, services.dialogs) {
    setObjectName("WindSheet");
    setWindowTitle(Qt8(voice_.In({"Wind data", "風データの作成"})));
    LayOut();
    resize(460, 560);
}

void WindSheet::LayOut() {
    auto* const all = new QVBoxLayout(this);
    auto* const fields = new QFormLayout;
    const auto field = [&](const char* name, const Text& caption, const std::string& text) {
        auto* const made = new QLineEdit(Qt8(text), this);
        made->setObjectName(name);
        fields->addRow(Qt8(voice_.In(caption)), made);
        return made;
    };
    const std::string today = DateText(services_.platform.LocalNow().Seconds);
    name_ = field("FileName", {"&File name", "ファイル名(&F)"}, "wind.csv");
    day_ = field("Day", {"&Day of times without a date", "日付のない時刻の日付(&D)"}, today);
    timeDiff_ = field("TimeDiff", {"Hours from &UTC, for times that tell a zone", "UTCとの時差 (時間)(&U)"},
                      std::to_string(LocalUtcOffsetHours(services_.platform)));
    all->addLayout(fields);
    table_ = new QTableWidget(EmptyRows, 3, this);
    table_->setObjectName("WindTable");
    table_->setHorizontalHeaderLabels({Qt8(voice_.In({"Time", "時刻"})),
                                       Qt8(voice_.In({"Speed (kn)", "風速 (kn)"})),
                                       Qt8(voice_.In({"Direction (magnetic)", "風向 (磁北)"}))});
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    all->addWidget(table_, 1);
    auto* const buttons = new QHBoxLayout;
    const auto button = [&](const char* name, const Text& caption, auto clicked) {
        auto* const made = new QPushButton(Qt8(voice_.In(caption)), this);
        made->setObjectName(name);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, clicked);
        buttons->addWidget(made);
    };
    button("Read", {"&Read a table...", "表の読み込み(&R)..."}, [this] { ReadFile(); });
    button("Paste", {"&Paste", "貼り付け(&P)"}, [this] { Paste(); });
    buttons->addStretch();
    button("Cancel", {"Cancel", "キャンセル"}, [this] { reject(); });
    button("Ok", {"OK", "OK"}, [this] { Ok_Clicked(); });
    all->addLayout(buttons);
}

double WindSheet::TimeDiff() const {
    return ParseTimeDiff(timeDiff_->text().toStdString()).value_or(0);
}

/// What stands in the table, rows without anything left out.
WindTable WindSheet::Rows() const {
    std::string text;
    for (int row = 0; row < table_->rowCount(); ++row) {
        std::string line;
        for (int column = 0; column < table_->columnCount(); ++column) {
            const QTableWidgetItem* const cell = table_->item(row, column);
            line += (column == 0 ? "" : "\t") +
                    (cell != nullptr ? cell->text().simplified().toStdString() : "");
        }
        if (line.size() > 2) text += line + "\n";
    }
    return ReadWindTable(text, TimeDiff(), day_->text().toStdString());
}

void WindSheet::Show(const std::vector<WindRow>& rows) {
    table_->clearContents();
    table_->setRowCount(static_cast<int>(rows.size()) + EmptyRows);
    int line = 0;
    for (const WindRow& row : rows) {
        const auto put = [&](int column, const std::string& text) {
            table_->setItem(line, column, new QTableWidgetItem(Qt8(text)));
        };
        put(0, DateTimeText(row.Time));
        put(1, row.Speed ? NumberText(RoundDecimals(*row.Speed, 2)) : "");
        put(2, NumberText(RoundDecimals(row.Direction, 1)));
        ++line;
    }
}

void WindSheet::Take(std::string_view table) {
    const WindTable read = ReadWindTable(table, TimeDiff(), day_->text().toStdString());
    if (read.Rows.empty())
        return voice_.Say({"No wind was found there: a time, a speed and a direction in each line",
                           "風データがありません (各行に時刻、風速、風向が必要です)"});
    std::vector<WindRow> rows = Rows().Rows;
    std::ranges::copy(read.Rows, std::back_inserter(rows));
    std::ranges::stable_sort(rows, {}, &WindRow::Time);
    Show(rows);
    if (read.Skipped > 0)
        voice_.Say(
            {"Lines without a time or a direction were left out", "時刻または風向のない行を除外しました"},
            std::to_string(read.Skipped));
}

void WindSheet::ReadFile() {
    const auto files =
        services_.dialogs.ChooseFiles(windowTitle().toStdString(), {}, {"*.csv", "*.txt", "*.tsv"});
    for (const auto& file : files) {
        const auto bytes = ReadWholeFile(file, LargestTable);
        if (!bytes)
            return voice_.Say({"The file cannot be read", "ファイルを読み込めません"},
                              file.filename().string());
        Take(*bytes);
    }
}

void WindSheet::Paste() {
    Take(QApplication::clipboard()->text().toStdString());
}

void WindSheet::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) return Paste();
    QDialog::keyPressEvent(event);
}

void WindSheet::Ok_Clicked() {
    const WindTable table = Rows();
    if (table.Rows.empty() || table.Skipped > 0) {
        Text trouble{"No wind has been entered", "風データが入力されていません"};
        if (table.Skipped > 0)
            trouble = {"Lines without a time or a direction:", "時刻または風向のない行があります:"};
        return voice_.Say(trouble, table.Skipped > 0 ? std::to_string(table.Skipped) : "");
    }
    std::string name = SafeFileName(name_->text().toStdString());
    if (name.find('.') == std::string::npos) name += ".csv";
    const auto path = FindBelow(settings_.AppPath, "winddat/" + name);
    if (IsFile(path) && !voice_.Ask({"A file of this name exists.\r\nOverwrite?",
                                     "同名のファイルがあります。\r\n上書きしますか？"}))
        return;
    if (const std::error_code error = WriteWindTable(settings_.AppPath, name, table.Rows))
        return voice_.SayUnder(settings_.AppTitle, path.string() + "\r\n(" + error.message() + ")");
    accept();
}

}  // namespace keelview
