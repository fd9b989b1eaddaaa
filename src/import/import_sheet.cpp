#include "import/import_sheet.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/plan_names.h"
#include "analysis/race_plan_writing.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "import/plan_words.h"
#include "racedata/race_file.h"
#include "racedata/tracks/formats.h"

namespace keelview {

namespace {

constexpr QSize Size(1400, 860);
constexpr int UnusedHeight = 110;

QString Qt8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string TextOf(const QLineEdit& field) {
    const std::string text = field.text().toStdString();
    return std::string(Trim(text));
}

/// Shows what the plan proposes, unless the person has typed something else.
void Propose(QLineEdit& field, std::string_view text) {
    if (!field.isModified()) field.setText(Qt8(text));
}

std::vector<std::filesystem::path> LocalPaths(const QMimeData& data) {
    std::vector<std::filesystem::path> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.emplace_back(url.toLocalFile().toStdU16String());
    return paths;
}

}  // namespace

ImportSheet::ImportSheet(const Settings& settings, Services& services)
    : settings_(settings), services_(services), voice_(settings, services.dialogs) {
    setObjectName("ImportSheet");
    setWindowTitle(Qt8(voice_.In({"New race from track files", "航跡ファイルからレースを作成"})));
    setAcceptDrops(true);
    LayOut();
    Connect();
    resize(Size.boundedTo(screen()->availableSize()));
}

QLineEdit* ImportSheet::Field(const char* name, const Text& caption, QGridLayout& grid, int row,
                              int column) {
    auto* const field = new QLineEdit(this);
    field->setObjectName(name);
    auto* const label = new QLabel(Qt8(voice_.In(caption)), this);
    label->setBuddy(field);
    grid.addWidget(label, row, column);
    grid.addWidget(field, row, column + 1);
    return field;
}

void ImportSheet::LayOut() {
    auto* const all = new QVBoxLayout(this);
    auto* const grid = new QGridLayout;
    title_ = Field("Title", {"&Title", "タイトル(&T)"}, *grid, 0, 0);
    raceFile_ = Field("RaceFile", {"&Race file", "レースファイル(&R)"}, *grid, 0, 2);
    timeDiff_ = Field("TimeDiff", {"Time &Diff (h)", "時差 (時間)(&D)"}, *grid, 0, 4);
    start_ = Field("Start", {"&Start", "スタート(&S)"}, *grid, 1, 0);
    finish_ = Field("Finish", {"&Finish", "フィニッシュ(&F)"}, *grid, 1, 2);
    for (QLineEdit* const time : {start_, finish_})
        time->setPlaceholderText(Qt8(voice_.In({"not known yet", "未定"})));
    period_ = new QLabel(this);
    grid->addWidget(period_, 1, 4, 1, 2);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 3);
    grid->setColumnStretch(5, 1);
    all->addLayout(grid);

    auto* const halves = new QSplitter(this);
    boats_ = new BoatTable(halves, voice_);
    proposal_ = new ProposalPanel(halves, voice_);
    halves->setSizes({Size.width() * 11 / 20, Size.width() * 9 / 20});
    all->addWidget(halves, 1);
    unusedHead_ = new QLabel(Qt8(voice_.In({"Not used:", "使用しないファイル:"})), this);
    unused_ = new QListWidget(this);
    unused_->setObjectName("Unused");
    unused_->setMaximumHeight(UnusedHeight);
    all->addWidget(unusedHead_);
    all->addWidget(unused_);

    auto* const buttons = new QHBoxLayout;
    const auto button = [&](const char* name, const Text& caption) {
        auto* const made = new QPushButton(Qt8(voice_.In(caption)), this);
        made->setObjectName(name);
        made->setAutoDefault(false);
        buttons->addWidget(made);
        return made;
    };
    addFiles_ = button("AddFiles", {"&Add files...", "ファイルの追加(&A)..."});
    addFolder_ = button("AddFolder", {"Add f&older...", "フォルダーの追加(&O)..."});
    bar_ = new QProgressBar(this);
    buttons->addWidget(bar_, 1);
    stop_ = button("Stop", {"Stop", "中止"});
    buttons->addStretch();
    cancel_ = button("Cancel", {"Cancel", "キャンセル"});
    ok_ = button("Ok", {"OK", "OK"});
    ok_->setDefault(true);
    all->addLayout(buttons);
    work_ = std::make_unique<BackgroundWork>(*bar_, *stop_);
}

void ImportSheet::Connect() {
    connect(addFiles_, &QPushButton::clicked, this, [this] { AddFiles(); });
    connect(addFolder_, &QPushButton::clicked, this, [this] { AddFolder(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { reject(); });
    connect(ok_, &QPushButton::clicked, this, [this] { Ok_Clicked(); });
    connect(timeDiff_, &QLineEdit::textEdited, this, [this] { TimeDiff_Typed(); });
    connect(boats_, &QTableWidget::itemSelectionChanged, this,
            [this] { proposal_->ShowPlan(plan_, boats_->currentRow()); });
    boats_->OnSet = [this](int row) { Boat_Set(row); };
    proposal_->OnSet = [this] { ShowFields(); };
    searcher_.OnFound = [this](DayFinding finding) { proposal_->ShowFinding(std::move(finding)); };
}

std::string ImportSheet::MakeRace(const std::vector<std::filesystem::path>& paths) {
    setWindowModality(Qt::ApplicationModal);
    show();
    if (!paths.empty()) Add(paths);
    if (services_.platform.Ending() || leaves_ || !isVisible()) return {};
    return exec() == Accepted ? written_ : std::string();
}

void ImportSheet::reject() {
    leaves_ = true;
    if (work_->IsBusy())
        work_->Stop();
    else
        QDialog::reject();
}

void ImportSheet::AddFiles() {
    const auto files =
        services_.dialogs.ChooseFiles(voice_.In({"Track files", "航跡ファイル"}), {}, TrackFilePatterns());
    if (!files.empty()) Add(files);
}

void ImportSheet::AddFolder() {
    const QString folder = QFileDialog::getExistingDirectory(
        this, windowTitle(), {}, QFileDialog::ShowDirsOnly | QFileDialog::ReadOnly);
    if (!folder.isEmpty()) Add({folder.toStdU16String()});
}

/// Reads everything anew, so that it makes no difference what came first. What was read before stays where
/// the person stops it.
void ImportSheet::Add(const std::vector<std::filesystem::path>& paths) {
    std::vector<std::filesystem::path> all = paths_;
    all.insert(all.end(), paths.begin(), paths.end());
    std::optional<RacePlan> plan;
    SetBusy(true);
    work_->Do([&](const StepProgress& progress) {
        auto found = FindTracksIn(HandedFiles(all), progress);
        if (!found) return;
        plan = PlanRace(*std::move(found));
        SettleTargets(settings_.AppPath, *plan);
    });
    SetBusy(false);
    if (plan) {
        paths_ = std::move(all);
        plan_ = *std::move(plan);
        ShowAll();
        Search();
    }
    if (leaves_) QDialog::reject();
}

void ImportSheet::ShowAll() {
    ShowFields();
    boats_->ShowPlan(plan_);
    proposal_->ShowPlan(plan_, boats_->currentRow());
    unused_->clear();
    for (const UnusedFile& file : plan_.Unused) unused_->addItem(Qt8(UnusedText(voice_, file)));
    unusedHead_->setVisible(!plan_.Unused.empty());
    unused_->setVisible(!plan_.Unused.empty());
}

void ImportSheet::ShowFields() {
    Propose(*title_, plan_.Title);
    Propose(*raceFile_, plan_.RaceFileName);
    RaceControl race = PlannedRace(plan_);
    if (const FoundRace* const found = proposal_->Taken()) proposal_->Fill(*found, race);
    Propose(*start_, race.Start.Text());
    Propose(*finish_, race.Finish.Text());
    Propose(*timeDiff_, NumberText(plan_.TimeDiff));
    if (plan_.Boats.empty()) return period_->clear();
    period_->setText(Qt8(voice_.Str({"Period ", "期間 "}) + DateTimeText(LocalSecond(plan_, plan_.Begin)) +
                         " - " + TimeOfDayText(LocalSecond(plan_, plan_.End))));
}

/// Looks for races in what is taken now.
void ImportSheet::Search() {
    if (plan_.Boats.empty()) return;
    proposal_->TellSearch();
    searcher_.Begin(plan_);
}

void ImportSheet::Boat_Set(int row) {
    const PlannedBoat& boat = plan_.Boats[static_cast<std::size_t>(row)];
    const auto sailed = [&boat] { return std::pair(boat.Taken, ClockMs(boat)); };
    const auto before = sailed();
    boats_->Take(row, plan_);
    if (sailed() == before) return ShowAll();  // a name alone
    const double typed = plan_.TimeDiff;
    SettleCourseAndTimes(plan_);
    if (timeDiff_->isModified()) MoveClock(plan_, typed);
    ShowAll();
    Search();
}

void ImportSheet::TimeDiff_Typed() {
    const auto hours = ParseTimeDiff(timeDiff_->text().toStdString());
    if (!hours) return;
    MoveClock(plan_, *hours);
    ShowAll();
    Search();
}

bool ImportSheet::TakeTime(const QLineEdit& field, const Text& trouble, RaceTime& time) {
    const std::string text = TextOf(field);
    const auto at = ParseDateTime(text);
    time = at ? RaceTime(*at) : RaceTime();
    if (at || text.empty()) return true;
    voice_.Say(trouble, text);
    return false;
}

/// The race as it is planned, found and typed. False, and the person is told, for what is typed wrong.
bool ImportSheet::TakeFields(RaceControl& race) {
    if (!proposal_->CourseStands()) return false;
    if (!ParseTimeDiff(timeDiff_->text().toStdString())) {
        voice_.Say({"Incorrect time difference", "時差が正しくありません"}, TextOf(*timeDiff_));
        return false;
    }
    plan_.Title = TextOf(*title_);
    plan_.RaceFileName = SafeFileName(TextOf(*raceFile_));
    if (!IsRaceFileName(plan_.RaceFileName)) plan_.RaceFileName += ".txt";
    race = PlannedRace(plan_);
    if (const FoundRace* const found = proposal_->Taken()) proposal_->Fill(*found, race);
    if (!TakeTime(*start_,
                  {"Incorrect start date or time", "スタートの日付、時間の入力スタイルが正しくありません"},
                  race.Start) ||
        !TakeTime(
            *finish_,
            {"Incorrect finish date or time", "フィニッシュの日付、時間の入力スタイルが正しくありません"},
            race.Finish))
        return false;
    if (race.Start.At() && race.Finish.At() && *race.Finish.At() <= *race.Start.At()) {
        voice_.Say(
            {"The finish must be after the start", "フィニッシュはスタートより後の日時にしてください"});
        return false;
    }
    return true;
}

/// All races of the day as their files are to hold them, the one that is shown first.
std::vector<RaceControl> ImportSheet::RacesOfTheDay(const RaceControl& shown) const {
    std::vector<RaceControl> races;
    const std::string stem = shown.RaceFileName.substr(0, shown.RaceFileName.rfind('.'));
    int number = 0;
    for (const FoundRace& found : proposal_->Races()) {
        RaceControl race = shown;
        const bool isShown = &found == proposal_->Taken();
        if (!isShown) proposal_->Fill(found, race);
        ++number;
        race.RaceTitle1 += " R" + std::to_string(number);
        race.RaceFileName = stem + "_" + std::to_string(number) + ".txt";
        races.insert(isShown ? races.begin() : races.end(), std::move(race));
    }
    return races;
}

void ImportSheet::Ok_Clicked() {
    const auto taken = std::ranges::count_if(plan_.Boats, &PlannedBoat::Taken);
    if (taken == 0) return voice_.Say({"No boat is ticked", "艇が選択されていません"});
    if (taken > MaxBoats) return voice_.Say(TooManyBoats);
    RaceControl shown;
    if (!TakeFields(shown)) return;
    const std::vector<RaceControl> races =
        proposal_->TakesAll() ? RacesOfTheDay(shown) : std::vector{shown};
    const bool replace = std::ranges::any_of(races, [this](const RaceControl& race) {
        return RaceFileExists(settings_.AppPath, race.RaceFileName);
    });
    if (replace && !voice_.Ask({"A race file of this name exists. Replace it?",
                                "同名のレースファイルがあります。置き換えますか？"}))
        return;
    if (!Write(races, replace)) return;
    written_ = races.front().RaceFileName;
    accept();
}

/// True if the races were written; the person is told why it was not, unless they stopped it.
bool ImportSheet::Write(const std::vector<RaceControl>& races, bool replace) {
    PlanTrouble trouble;
    SetBusy(true);
    work_->Do([&](const StepProgress& progress) {
        trouble = WritePlannedRaces(settings_.AppPath, plan_, races, replace, progress);
    });
    SetBusy(false);
    if (trouble.Error && trouble.Error != std::errc::operation_canceled)
        voice_.SayUnder(settings_.AppTitle, TroubleText(voice_, trouble));
    if (trouble.Error && leaves_) QDialog::reject();
    return !trouble.Error;
}

void ImportSheet::SetBusy(bool busy) {
    for (QWidget* const each : std::initializer_list<QWidget*>{
             addFiles_, addFolder_, ok_, boats_, proposal_, title_, raceFile_, start_, finish_, timeDiff_})
        each->setEnabled(!busy);
}

void ImportSheet::dragEnterEvent(QDragEnterEvent* event) {
    if (!work_->IsBusy() && !LocalPaths(*event->mimeData()).empty()) event->acceptProposedAction();
}

void ImportSheet::dropEvent(QDropEvent* event) {
    const auto paths = LocalPaths(*event->mimeData());
    event->acceptProposedAction();
    // Let go of the one who drags before the work begins.
    QMetaObject::invokeMethod(
        this, [this, paths] { Add(paths); }, Qt::QueuedConnection);
}

}  // namespace keelview
