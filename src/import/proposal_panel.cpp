#include "import/proposal_panel.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <utility>

#include "analysis/race_proposal.h"
#include "base/numbers.h"

namespace keelview {

namespace {

constexpr int NotesHeight = 96;
constexpr CivilTime BeforeGun = 60;  // seconds of the tracks that are shown with a race

QString Qt8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

ProposalPanel::ProposalPanel(QWidget* parent, const Voice& voice) : QWidget(parent), voice_(voice) {
    LayOut();
    Connect();
    ShowRaces();
}

QPushButton* ProposalPanel::ToolButton(const char* name, const Text& caption, const Text& hint) {
    auto* const button = new QPushButton(Qt8(voice_.In(caption)), this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    button->setToolTip(Qt8(voice_.In(hint)));
    return button;
}

void ProposalPanel::LayOut() {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addLayout(HeadRow());
    chart_ = new TrackChart(this);
    all->addWidget(chart_, 1);
    all->addLayout(ToolRow());
    all->addLayout(CourseRow());
    notes_ = new QPlainTextEdit(this);
    notes_->setObjectName("Notes");
    notes_->setReadOnly(true);
    notes_->setTabChangesFocus(true);
    notes_->setMinimumHeight(NotesHeight / 2);
    notes_->setMaximumHeight(NotesHeight);
    all->addWidget(notes_);
}

QLayout* ProposalPanel::HeadRow() {
    auto* const head = new QHBoxLayout;
    take_ = new QCheckBox(Qt8(voice_.In({"Take this ra&ce", "このレースを採用(&C)"})), this);
    take_->setObjectName("TakeRace");
    take_->setToolTip(
        Qt8(voice_.In({"Marks, lines, course and times of this race go into the race file",
                       "このレースのマーク・ライン・コース・時刻をレースファイルに入れます"})));
    which_ = new QComboBox(this);
    which_->setObjectName("WhichRace");
    which_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    head->addWidget(take_);
    head->addWidget(which_, 1);
    all_ = new QCheckBox(Qt8(voice_.In({"A&ll, a file each", "全レースを別ファイルに(&L)"})), this);
    all_->setObjectName("AllRaces");
    all_->setToolTip(Qt8(voice_.In({"Each race of the day gets a race file of its own, with its number",
                                    "その日の各レースを番号付きの別々のレースファイルにします"})));
    head->addWidget(all_);
    return head;
}

QLayout* ProposalPanel::ToolRow() {
    auto* const tools = new QHBoxLayout;
    tools_ = {
        ToolButton("AddMark", {"Add mark", "マーク追加"},
                   {"Then click its place on the chart", "押してからチャートをクリックします"}),
        ToolButton("AddLine", {"Add line", "ライン追加"},
                   {"Then click both its ends on the chart", "押してからチャートを2点クリックします"}),
        ToolButton("Remove", {"Remove", "削除"},
                   {"Then click a mark or an end of a line (or right click it right away)",
                    "押してからマーク・ライン端をクリックします（右クリックでも削除）"})};
    for (QPushButton* const tool : tools_) tools->addWidget(tool);
    tools->addStretch();
    asFound_ = ToolButton("AsFound", {"As found", "元に戻す"},
                          {"Takes back all corrections", "修正をすべて取り消します"});
    tools->addWidget(asFound_);
    return tools;
}

QLayout* ProposalPanel::CourseRow() {
    auto* const row = new QHBoxLayout;
    auto* const caption = new QLabel(Qt8(voice_.In({"Co&urse", "コース(&U)"})), this);
    course_ = new QLineEdit(this);
    course_->setObjectName("Course");
    course_->setToolTip(Qt8(voice_.In({"Lines and marks in their order; MK3/MK4 is a gate",
                                       "ライン・マークの順序。MK3/MK4 はゲートです"})));
    caption->setBuddy(course_);
    laps_ = new QLabel(this);
    row->addWidget(caption);
    row->addWidget(course_, 1);
    row->addWidget(laps_);
    return row;
}

void ProposalPanel::Connect() {
    connect(take_, &QCheckBox::toggled, this, [this] {
        if (OnSet) OnSet();
    });
    connect(all_, &QCheckBox::toggled, this, [this](bool on) {
        if (on) take_->setChecked(true);
    });
    connect(which_, &QComboBox::activated, this, [this] { Race_Chosen(); });
    connect(asFound_, &QPushButton::clicked, this, [this] { Adopt(); });
    connect(course_, &QLineEdit::textEdited, this, [this] { Course_Typed(); });
    ConnectTool(*tools_[0], TrackChart::Tool::AddMark);
    ConnectTool(*tools_[1], TrackChart::Tool::AddLine);
    ConnectTool(*tools_[2], TrackChart::Tool::Remove);
    chart_->OnToolDone = [this] {
        for (QPushButton* const tool : tools_) tool->setChecked(false);
    };
    chart_->OnMove = [this](const CourseGrip& grip, const Position& at) {
        CorrectOnChart([&](FoundRace& race) { MoveTo(race, grip, at); });
    };
    chart_->OnAddMark = [this](const Position& at) {
        CorrectOnChart([&](FoundRace& race) { AddMark(race, at); });
    };
    chart_->OnAddLine = [this](const Position& from, const Position& to) {
        CorrectOnChart([&](FoundRace& race) { AddLine(race, from, to); });
    };
    chart_->OnRemove = [this](const CourseKey& entry) {
        CorrectOnChart([&](FoundRace& race) { Remove(race, entry); });
    };
}

void ProposalPanel::ConnectTool(QPushButton& button, TrackChart::Tool tool) {
    button.setCheckable(true);
    connect(&button, &QPushButton::clicked, this, [this, &button, tool](bool on) {
        for (QPushButton* const other : tools_) other->setChecked(on && other == &button);
        chart_->Use(on ? tool : TrackChart::Tool::Drag);
    });
}

const FoundRace* ProposalPanel::Current() const {
    const int which = which_->currentIndex();
    return which < 0 ? nullptr : &races_[static_cast<std::size_t>(which)];
}

const FoundRace* ProposalPanel::Taken() const {
    return take_->isChecked() ? Current() : nullptr;
}

bool ProposalPanel::TakesAll() const {
    return Taken() != nullptr && races_.size() > 1 && all_->isChecked();
}

void ProposalPanel::Fill(const FoundRace& found, RaceControl& race) const {
    TakeFoundRace(found, Clock(), race);
}

CivilTime ProposalPanel::Clock() const {
    return plan_ != nullptr ? LocalSecond(*plan_, origin_) : 0;
}

void ProposalPanel::ShowPlan(const RacePlan& plan, int chosen) {
    plan_ = &plan;
    chart_->ShowPlan(plan, chosen);
    for (int i = 0; i < which_->count(); ++i)
        which_->setItemText(i, Qt8(RaceText(static_cast<std::size_t>(i))));
    ShowChart(false);
}

void ProposalPanel::TellSearch() {
    searching_ = true;
    ShowCurrent(false);
}

void ProposalPanel::ShowFinding(DayFinding finding) {
    searching_ = false;
    searched_ = true;
    finding_ = std::move(finding);
    lying_ = NamesOf(finding_.Found.Lying);
    if (corrected_)
        ShowCurrent(false);
    else
        Adopt();
}

/// Has the races as they were found; the one at the time of the chosen one stays chosen, else the surest.
void ProposalPanel::Adopt() {
    const FoundRace* const before = Current();
    const CivilTime gunBefore = before != nullptr ? Clock() + before->Gun : 0;
    const bool had = before != nullptr;
    corrected_ = false;
    races_ = finding_.Found.Races;
    missing_ = finding_.Found.Missing;
    if (plan_ != nullptr) origin_ = MomentOf(*plan_, finding_.Clock);
    std::size_t chosen = 0;
    if (const FoundRace* const surest = finding_.Surest())
        chosen = static_cast<std::size_t>(surest - finding_.Found.Races.data());
    for (std::size_t i = 0; had && i < races_.size(); ++i)
        if (std::abs(finding_.Clock + races_[i].Gun - gunBefore) < 60) chosen = i;
    ShowRaces();
    which_->setCurrentIndex(races_.empty() ? -1 : static_cast<int>(chosen));
    ShowCourse();
    ShowCurrent(true);
    if (OnSet) OnSet();
}

/// Whoever corrects a race means to take it.
void ProposalPanel::Correct(const std::function<void(FoundRace&)>& change) {
    const int which = which_->currentIndex();
    if (which < 0) return;
    change(races_[static_cast<std::size_t>(which)]);
    corrected_ = true;
    which_->setItemText(which, Qt8(RaceText(static_cast<std::size_t>(which))));
    const QSignalBlocker quiet(*take_);
    take_->setChecked(true);
    ShowCurrent(false);
    if (OnSet) OnSet();
}

void ProposalPanel::CorrectOnChart(const std::function<void(FoundRace&)>& change) {
    Correct(change);
    ShowCourse();
    ShowLaps();
}

/// A course that names nothing of the race is not taken; what it names stands beside it then.
void ProposalPanel::Course_Typed() {
    FoundRace typed = *Current();
    wrongEntry_ = TakeCourse(typed, course_->text().toStdString());
    if (wrongEntry_.empty())
        Correct([&](FoundRace& race) { race.Course = typed.Course; });
    else
        ShowLaps();
}

bool ProposalPanel::CourseStands() {
    if (wrongEntry_.empty() || Taken() == nullptr) return true;
    voice_.Say({"The race has no such mark or line", "そのようなマーク・ラインはありません"}, wrongEntry_);
    return false;
}

void ProposalPanel::Race_Chosen() {
    ShowCourse();
    ShowCurrent(true);
    if (OnSet) OnSet();
}

void ProposalPanel::ShowRaces() {
    which_->clear();
    for (std::size_t i = 0; i < races_.size(); ++i) which_->addItem(Qt8(RaceText(i)));
    if (races_.empty()) take_->setChecked(false);
    all_->setVisible(races_.size() > 1);
}

void ProposalPanel::ShowCourse() {
    const FoundRace* const race = Current();
    wrongEntry_.clear();
    course_->setText(race != nullptr ? Qt8(CourseAsTyped(*race)) : QString());
}

void ProposalPanel::ShowLaps() {
    const FoundRace* const race = Current();
    if (race == nullptr) return laps_->clear();
    const int laps = LapsOf(*race);
    laps_->setText(
        Qt8(wrongEntry_.empty()
                ? std::to_string(laps) + voice_.Str(laps == 1 ? Text{" lap", "周"} : Text{" laps", "周"})
                : wrongEntry_ + " ?"));
}

void ProposalPanel::ShowCurrent(bool fit) {
    const bool any = Current() != nullptr;
    for (QWidget* const each : std::initializer_list<QWidget*>{take_, which_, course_})
        each->setEnabled(any);
    for (QPushButton* const tool : tools_) tool->setEnabled(any);
    asFound_->setEnabled(corrected_);
    ShowLaps();
    const int scrolled = notes_->verticalScrollBar()->value();
    notes_->setPlainText(Qt8(NotesText()));
    notes_->verticalScrollBar()->setValue(fit ? 0 : scrolled);
    ShowChart(fit);
}

void ProposalPanel::ShowChart(bool fit) {
    const FoundRace* const race = Current();
    ChartedRace charted;
    if (race != nullptr && plan_ != nullptr) {
        const CivilTime gun = Clock() + race->Gun;
        charted.Race = race;
        charted.From = MomentOf(*plan_, gun - BeforeGun);
        charted.To = race->Finish ? MomentOf(*plan_, Clock() + *race->Finish) : plan_->End;
        charted.Start = TimeOfDayText(gun);
    }
    chart_->ShowRace(charted, fit);
}

/// The names of boats by their numbers among those that are taken.
std::string ProposalPanel::NamesOf(const std::vector<int>& boats) const {
    std::string names;
    int number = 0;
    for (const PlannedBoat& boat : plan_->Boats)
        if (boat.Taken && std::ranges::find(boats, ++number) != boats.end())
            names += (names.empty() ? "" : ", ") + boat.Name;
    return names;
}

/// "1/2   12:35:00   78 %   L1 MK1 MK2 L1", with the day where the plan has several.
std::string ProposalPanel::RaceText(std::size_t which) const {
    const FoundRace& race = races_[which];
    const CivilTime gun = Clock() + race.Gun;
    const bool oneDay = plan_ == nullptr || DateText(LocalSecond(*plan_, plan_->Begin)) ==
                                                DateText(LocalSecond(*plan_, plan_->End));
    std::string text =
        races_.size() > 1 ? std::to_string(which + 1) + "/" + std::to_string(races_.size()) + "   " : "";
    text += oneDay ? TimeOfDayText(gun) : DateTimeText(gun);
    return text + "   " + WholeText(race.Confidence * 100) + " %   " + CourseAsTyped(race);
}

std::string ProposalPanel::NotesText() const {
    const bool english = voice_.English();
    std::string text;
    const auto add = [&](const std::string& line) { text += (text.empty() ? "" : "\n") + line; };
    const FoundRace* const race = Current();
    if (searching_)
        add(voice_.Str({"Looking for races in the tracks ...", "航跡からレースを探しています…"}));
    if (race != nullptr) {
        add(voice_.Str({"Sure to ", "確からしさ "}) + WholeText(race->Confidence * 100) + " %" +
            (corrected_ ? voice_.Str({", corrected by hand", "（手で修正済み）"}) : ""));
        for (const Sentence& reason : race->Reasons) add(reason.In(english));
    } else if (searched_ && !searching_) {
        add(voice_.Str({"No race was found in the tracks.", "航跡からレースが見つかりませんでした。"}));
    }
    for (const Sentence& missing : missing_) add(missing.In(english));
    if (!lying_.empty())
        add(voice_.Str({"Lay still, as a mark does: ", "静止していたもの（マーク等）: "}) + lying_);
    return text;
}

}  // namespace keelview
