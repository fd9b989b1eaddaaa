#include "import/boat_table.h"

#include <QHeaderView>
#include <array>

#include "base/numbers.h"
#include "base/strings.h"
#include "import/plan_words.h"

namespace keelview {

namespace {

constexpr int RowRoom = 7;  // pixels above and below a text

enum : int {
    NameColumn,
    FileColumn,
    ClockColumn,
    WhyColumn,
    FirstColumn,
    LastColumn,
    FixesColumn,
    EveryColumn,
    GapsColumn,
    SkippedColumn,
    DeviceColumn,
    ColumnCount
};

constexpr std::array<Text, ColumnCount> Heads{{{"Boat", "艇名"},
                                               {"Recording", "ファイル"},
                                               {"Clock", "時計の補正"},
                                               {"Left out", "除外理由"},
                                               {"First fix", "最初の測位"},
                                               {"Last fix", "最後の測位"},
                                               {"Fixes", "測位数"},
                                               {"Every (s)", "間隔 (秒)"},
                                               {"Gaps", "欠落"},
                                               {"Skipped", "除外"},
                                               {"Device", "機器"}}};

QString Qt8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The time of a track's end, with its day where that is another than its beginning's.
std::string LastText(CivilTime first, CivilTime last) {
    return DateText(first) == DateText(last) ? TimeOfDayText(last) : DateTimeText(last);
}

Qt::CheckState Ticked(bool on) {
    return on ? Qt::Checked : Qt::Unchecked;
}

}  // namespace

BoatTable::BoatTable(QWidget* parent, const Voice& voice)
    : QTableWidget(0, ColumnCount, parent), voice_(voice) {
    setObjectName("BoatTable");
    for (int column = 0; column < ColumnCount; ++column)
        setHorizontalHeaderItem(
            column, new QTableWidgetItem(Qt8(voice.In(Heads.at(static_cast<std::size_t>(column))))));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    verticalHeader()->setVisible(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + RowRoom);
    connect(this, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
        if (!filling_ && OnSet) OnSet(item->row());
    });
}

void BoatTable::Put(int row, int column, const std::string& text, Qt::ItemFlags more) {
    // A cell is kept as long as its row: it may be the one that the person is setting.
    if (item(row, column) == nullptr) setItem(row, column, new QTableWidgetItem);
    item(row, column)->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | more);
    item(row, column)->setText(Qt8(text));
}

void BoatTable::ShowRow(int row, const RacePlan& plan, const PlannedBoat& boat) {
    const FoundTrack& track = boat.Track;
    const std::string format = plan.Files[boat.File].Format;
    Put(row, NameColumn, boat.Name, Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    item(row, NameColumn)->setCheckState(Ticked(boat.Taken));
    Put(row, FileColumn, BoatFileOf(plan, boat));
    item(row, FileColumn)->setToolTip(Qt8(plan.Files[boat.File].Name));
    Put(row, DeviceColumn, track.Device.empty() ? format : track.Device + " (" + format + ")");
    Put(row, FirstColumn, DateTimeText(LocalSecond(plan, track.First)));
    Put(row, LastColumn, LastText(LocalSecond(plan, track.First), LocalSecond(plan, track.Last)));
    Put(row, FixesColumn, std::to_string(track.Fixes));
    Put(row, EveryColumn,
        track.Rhythm.MedianInterval ? NumberText(RoundDecimals(*track.Rhythm.MedianInterval, 2)) : "");
    Put(row, GapsColumn, GapsText(voice_, track.Rhythm));
    Put(row, SkippedColumn, SkippedText(voice_, track.Left));
    Put(row, ClockColumn, boat.ProposedClock ? ClockText(*boat.ProposedClock) : "",
        Qt::ItemIsUserCheckable);
    const QVariant clockTick =
        boat.ProposedClock ? QVariant(static_cast<int>(Ticked(boat.ClockOffset != 0))) : QVariant();
    item(row, ClockColumn)->setData(Qt::CheckStateRole, clockTick);
    if (boat.ProposedClock)
        item(row, ClockColumn)
            ->setToolTip(
                Qt8(voice_.In({"This boat's clock seems to be wrong by so much. Tick to add it.",
                               "この艇の時計のずれと思われる値です。チェックすると加算します。"})));
    Put(row, WhyColumn, LeftOutText(voice_, boat.Lies));
    for (const int column : {FixesColumn, EveryColumn})
        item(row, column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void BoatTable::ShowPlan(const RacePlan& plan) {
    filling_ = true;
    const bool isNew = rowCount() != static_cast<int>(plan.Boats.size());
    setRowCount(static_cast<int>(plan.Boats.size()));
    for (int row = 0; row < rowCount(); ++row)
        ShowRow(row, plan, plan.Boats[static_cast<std::size_t>(row)]);
    if (isNew) resizeColumnsToContents();
    filling_ = false;
}

void BoatTable::Take(int row, RacePlan& plan) const {
    PlannedBoat& boat = plan.Boats[static_cast<std::size_t>(row)];
    const std::string name = item(row, NameColumn)->text().toStdString();
    if (const auto bare = Trim(name); !bare.empty()) boat.Name = bare;
    boat.Taken = item(row, NameColumn)->checkState() == Qt::Checked;
    if (!boat.ProposedClock) return;
    const bool sets = item(row, ClockColumn)->checkState() == Qt::Checked;
    // A boat that lay beside the fleet by its clock alone sails with it from now on.
    if (sets && boat.ClockOffset == 0 && boat.Lies.Why == LeftOut::OtherTime) boat.Taken = true;
    boat.ClockOffset = sets ? *boat.ProposedClock : 0;
}

}  // namespace keelview
