#include "soak/soak.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "display/qt/native_control.h"
#include "session/start.h"
#include "soak/simulated_clock.h"
#include "soak/soak_platform.h"
#include "support/memory.h"

namespace keelview {

namespace fs = std::filesystem;

namespace {

constexpr int TickMilliseconds = 30;
constexpr long ReportEvery = 10'000;
constexpr long PicturesEvery = 500;

// Without a tick of the film for so many actions, nothing that a person can do gets one going again.
constexpr long MostActionsWithoutTick = 20'000;

const QEvent::Type StepEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// Ends the soak, with what was done last.
[[noreturn]] void Fail(const char* why) {
    std::fprintf(stderr, "\n%s\n", why);
    std::abort();
}

/// A tick of the film that is counted.
struct CountedTick {
    std::function<void()> Tick;
    std::function<void()> Count;
    void operator()() const {
        Count();
        Tick();
    }
};

}  // namespace

Soak::Soak(Application& application, const fs::path& laidOut, std::uint64_t seed, long ticks)
    : application_(application),
      laidOut_(laidOut),
      wanted_(ticks),
      dice_(seed),
      person_(dice_, [this](const std::string& what) { Note(what); }) {
    fs::copy(laidOut_, tree_.Root(), fs::copy_options::recursive);
    // Distributions are built without the program: to pack it takes longer than all else together.
    for (const char* program : {"keelview", "keelview-report"}) fs::remove(tree_.Root() / program);
    // No loop waits: it is told what happens next instead.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
        waiting_ = QThread::currentThread()->loopLevel();
        QCoreApplication::postEvent(this, new QEvent(StepEvent));
    });
}

bool Soak::Run() {
    while (ticks_ < wanted_) Live();
    Report();
    return MemoryIsFlat();
}

/// One run of the program, as main has it.
void Soak::Live() {
    ++lives_;
    LayOut();
    SetProcessEnded(false);
    SoakPlatform platform(application_.ThePlatform(), dice_, [this] {
        if (dice_.OneIn(40)) person_.Act();
    });
    platform.Folder = tree_.Root();
    if (dice_.OneIn(3)) platform.Locale = dice_.OneIn(10) ? 0 : LocaleJapanese;
    Services services{platform, application_.TheDialogs()};
    app_ = std::make_unique<AppState>();
    const StartOutcome outcome = SettleStart(*app_, services);
    if (outcome != StartOutcome::End) {
        program_ = std::make_unique<Program>(
            *app_, services, [this](std::function<void()> task) { application_.Later(std::move(task)); });
        if (program_->Start(outcome)) application_.Run();
    }
    SetProcessEnded(true);
    program_.reset();
    app_.reset();
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

/// The data as the demo has them, whatever was saved over them; other mode and language.
void Soak::LayOut() {
    for (const char* folder : {"raceadmin", "gpsdat", "winddat", "attachment"}) {
        fs::remove_all(tree_.Root() / folder);
        fs::copy(laidOut_ / folder, tree_.Root() / folder, fs::copy_options::recursive);
    }
    const std::string mode = dice_.OneIn(3) ? "1" : "0";
    const std::string language = dice_.OneIn(3) ? "0" : "1";
    tree_.Write("raceadmin/Ver.00", mode + "," + language);
    if (dice_.OneIn(2)) tree_.Write("raceadmin/racefile.st", "Enoshima_R2.txt");
}

bool Soak::event(QEvent* event) {
    if (event->type() != StepEvent) return QObject::event(event);
    // A loop that has ended meanwhile waits for nothing more.
    if (QThread::currentThread()->loopLevel() == waiting_) Step();
    return true;
}

void Soak::Step() {
    CountTicks();
    MeasureAtRest();
    if (ticks_ >= wanted_) return application_.ThePlatform().EndProcess();
    RaceDesk* desk = program_ ? program_->TheDesk() : nullptr;
    const bool filmRuns = desk != nullptr && desk->session.Display().Timer1.Enabled();
    if (filmRuns ? dice_.OneIn(6) : dice_.OneIn(2))
        person_.Act();
    else
        simulated_clock::Advance(dice_.OneIn(300) ? dice_.Below(3000) : TickMilliseconds);
}

/// Has the ticks of a new display counted.
void Soak::CountTicks() {
    if (!program_ || program_->TheDesk() == nullptr) return;
    Event<>& onTimer = program_->TheDesk()->session.Display().Timer1.OnTimer;
    const std::function<void()> told = onTimer.Current();
    if (told.target<CountedTick>() != nullptr) return;
    onTimer.Clear();
    onTimer = CountedTick{told, [this] { Tick(); }};
    ++races_;
    raceClosed_ = true;
}

void Soak::Tick() {
    ++ticks_;
    actionsAtTick_ = person_.Actions();
    const View& view = app_->view;
    if (!std::isfinite(app_->clock.ReplayTime + app_->clock.ReplayStep + view.ViewCentreLat +
                       view.ViewCentreLon + view.ZoomFactor))
        Fail("the film or the view has lost its numbers");
    Digest(std::bit_cast<std::uint64_t>(app_->clock.ReplayTime));
    Digest(static_cast<std::uint64_t>(app_->display.ViewMode));
    if (ticks_ % PicturesEvery == 0) {
        const RaceDisp& form = program_->TheDesk()->session.Display();
        for (const Surface* surface : {&form.Picture1, &form.GPIC, &form.PicTime, &form.Picture6})
            DigestPicture(*surface);
    }
    if (ticks_ % ReportEvery == 0) Report();
}

void Soak::DigestPicture(const Surface& surface) {
    const Picture picture = surface.Image();
    for (const Pixel pixel : picture.Data().Bits) Digest(pixel & 0xffffffU);
}

void Soak::Note(const std::string& what) {
    box_.Note(what);
    for (const char letter : what) Digest(static_cast<unsigned char>(letter));
    if (person_.Actions() - actionsAtTick_ > MostActionsWithoutTick) Fail("the film stands for good");
}

/// Between two races of one run, with the menu alone on the screen.
void Soak::MeasureAtRest() {
    if (!raceClosed_ || !program_ || program_->TheMenu() == nullptr || program_->TheDesk() != nullptr ||
        program_->TheEditor() != nullptr || QApplication::activeModalWidget() != nullptr ||
        QApplication::activePopupWidget() != nullptr || !program_->TheMenu()->Visible())
        return;
    raceClosed_ = false;
    // The next race would begin with this; until then the last one stays, be it large or small.
    app_->tracks = {};
    app_->wind = {};
    app_->coast = {};
    app_->passes = {};
    rests_.push_back({ticks_, AllocatedBytes()});
}

void Soak::Report() const {
    std::printf(
        "%ld ticks, %ld actions, %ld races in %ld runs, %zu KB at rest, %zu KB allocated, %ld KB resident, "
        "digest %016llx\n",
        ticks_, person_.Actions(), races_, lives_, rests_.empty() ? 0 : rests_.back().Bytes / 1024,
        AllocatedBytes() / 1024, ResidentKilobytes(), static_cast<unsigned long long>(digest_));
    std::fflush(stdout);
}

/// Compares what is allocated at rest in the second quarter with the last: the first quarter fills what the
/// toolkit and the libraries keep for good. Medians, as a rest may find a field with a long text in it.
bool Soak::MemoryIsFlat() const {
    constexpr std::size_t Fewest = 5;
    // Single rests differ by some 50 KB. Of 200,000 ticks half of the openings, about 250, lie between the
    // two quarters: this bears 1 KB an opening.
    constexpr std::size_t BoundKilobytes = 256;
    const auto median = [this](int quarter) -> std::size_t {
        std::vector<std::size_t> bytes;
        for (const Rest& rest : rests_)
            if (rest.Ticks * 4 / wanted_ == quarter) bytes.push_back(rest.Bytes);
        if (bytes.size() < Fewest) return 0;
        std::ranges::nth_element(bytes, bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2));
        return bytes[bytes.size() / 2];
    };
    const std::size_t early = median(1);
    const std::size_t late = median(3);
    if (early == 0 || late == 0) {
        std::puts("too few rests to tell how memory goes");
        return true;
    }
    std::printf("at rest %zu KB in the second quarter, %zu KB in the last\n", early / 1024, late / 1024);
    if (late <= early + BoundKilobytes * 1024) return true;
    std::puts("MEMORY GROWS");
    return false;
}

}  // namespace keelview
