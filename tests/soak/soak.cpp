// soak TREE [--seed N] [--ticks N]: runs the program under random clicks and keys until its film has made
// so many ticks. TREE is what tools/lay_out_tree.sh has laid out; it is copied.

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QPointer>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>
#include <vector>

#include "display/application.h"
#include "display/qt/native_control.h"
#include "shell/program.h"
#include "shell/start.h"
#include "soak/black_box.h"
#include "soak/person.h"
#include "soak/soak_platform.h"
#include "support/memory.h"
#include "support/off_screen.h"
#include "support/temp_tree.h"

namespace keelview {

namespace {

namespace fs = std::filesystem;

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

/// Runs the whole program, over and over, under a person who does anything at all. Time is simulated: where
/// the program would wait for the person or the clock, either the person acts or the clock goes on. So the
/// film runs as fast as the machine can draw it, and a seed tells all that happens.
class Soak : public QObject {
  public:
    /// `laidOut` is a tree as tools/lay_out_tree.sh lays it out; it is copied, not written to.
    Soak(Application& application, const fs::path& laidOut, std::uint64_t seed, long ticks)
        : application_(application),
          laidOut_(laidOut),
          wanted_(ticks),
          dice_(seed),
          person_(dice_, [this](const std::string& what) { Note(what); }) {
        fs::copy(laidOut_, tree_.Root(), fs::copy_options::recursive);
        // Distributions are built without the program: to pack it takes longer than all else together.
        for (const char* program : {"keelview", "keelview-report"}) fs::remove(tree_.Root() / program);
        // No loop waits: it is told what happens next instead.
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] {
                    waiting_ = QThread::currentThread()->loopLevel();
                    QCoreApplication::postEvent(this, new QEvent(StepEvent));
                });
    }

    /// Lives until all ticks are done. True if the memory stayed flat.
    bool Run() {
        while (ticks_ < wanted_) Live();
        Report();
        return MemoryIsFlat();
    }

  protected:
    bool event(QEvent* event) override {
        if (event->type() != StepEvent) return QObject::event(event);
        // A loop that has ended meanwhile waits for nothing more.
        if (QThread::currentThread()->loopLevel() == waiting_) Step();
        return true;
    }

  private:
    /// One run of the program, as main has it.
    void Live() {
        ++lives_;
        LayOut();
        SetProcessEnded(false);
        SoakPlatform platform(application_.ThePlatform(), dice_, [this] {
            if (dice_.OneIn(40)) person_.Act();
        });
        platform.Folder = tree_.Root();
        platform.Japanese = dice_.OneIn(3);
        Services services{platform, application_.TheDialogs()};
        app_ = std::make_unique<AppState>();
        const StartOutcome outcome = SettleStart(*app_, services);
        if (outcome != StartOutcome::End) {
            program_ = std::make_unique<Program>(*app_, services, [this](std::function<void()> task) {
                application_.Later(std::move(task));
            });
            program_->Start(outcome);
            application_.Run();
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
    void LayOut() {
        for (const char* folder : {"raceadmin", "gpsdat", "winddat", "attachment"}) {
            fs::remove_all(tree_.Root() / folder);
            fs::copy(laidOut_ / folder, tree_.Root() / folder, fs::copy_options::recursive);
        }
        const std::string mode = dice_.OneIn(3) ? "1" : "0";
        const std::string language = dice_.OneIn(3) ? "0" : "1";
        tree_.Write("raceadmin/Ver.00", mode + "," + language);
        if (dice_.OneIn(2)) tree_.Write("raceadmin/racefile.st", "Enoshima_R2.txt");
    }

    void Step() {
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
    void CountTicks() {
        if (!program_ || program_->TheDesk() == nullptr) return;
        RaceDisp& display = program_->TheDesk()->session.Display();
        if (counted_ == NativeControl::Of(display).Inner) return;
        counted_ = NativeControl::Of(display).Inner;
        const Event<>::Handler shown = display.Timer1.OnTimer.Current();
        display.Timer1.OnTimer.Clear();
        display.Timer1.OnTimer = [this, shown] {
            Tick();
            shown();
        };
        ++races_;
        raceClosed_ = true;
    }

    void Tick() {
        ++ticks_;
        actionsAtTick_ = person_.Actions();
        const View& view = app_->view;
        if (!std::isfinite(app_->clock.ReplayTime + app_->clock.ReplayStep + view.ViewCentreLat +
                           view.ViewCentreLon + view.ZoomFactor))
            Fail("the film or the view has lost its numbers");
        Digest(std::bit_cast<std::uint64_t>(app_->clock.ReplayTime));
        Digest(static_cast<std::uint64_t>(app_->shown.ViewMode));
        if (ticks_ % PicturesEvery == 0) {
            const RaceDisp& form = program_->TheDesk()->session.Display();
            for (const Surface* surface : {&form.Picture1, &form.GPIC, &form.PicTime, &form.Picture6}) {
                const Picture picture = surface->Image();
                for (const Pixel pixel : picture.Data().Bits) Digest(pixel & 0xffffffU);
            }
        }
        if (ticks_ % ReportEvery == 0) Report();
    }

    void Note(const std::string& what) {
        black_box::Note(what);
        for (const char letter : what) Digest(static_cast<unsigned char>(letter));
        if (person_.Actions() - actionsAtTick_ > MostActionsWithoutTick) Fail("the film stands for good");
    }

    /// Between two races of one run, with the menu alone on the screen.
    void MeasureAtRest() {
        if (!raceClosed_ || !program_ || program_->TheMenu() == nullptr || program_->TheDesk() != nullptr ||
            program_->TheEditor() != nullptr || QApplication::activeModalWidget() != nullptr ||
            QApplication::activePopupWidget() != nullptr || !program_->TheMenu()->Visible())
            return;
        raceClosed_ = false;
        // The next race would begin with this; until then the last one stays, be it large or small.
        static_cast<RaceNumbers&>(*app_) = {};
        app_->now = {};
        const long quarter = std::min(ticks_ * 4 / wanted_, 4L);
        rests_.at(static_cast<std::size_t>(quarter)).push_back(AllocatedBytes());
    }

    void Report() const {
        std::printf(
            "%ld ticks, %ld actions, %ld races in %ld runs, %zu KB allocated, %ld KB resident, digest "
            "%016llx\n",
            ticks_, person_.Actions(), races_, lives_, AllocatedBytes() / 1024, ResidentKilobytes(),
            static_cast<unsigned long long>(digest_));
    }

    /// Compares what is allocated at rest in the second quarter with the last: the first quarter fills what
    /// the toolkit and the libraries keep for good. Medians, as a rest may find a field with a long text in
    /// it.
    bool MemoryIsFlat() const {
        // Single rests differ by some 50 KB. Of 200,000 ticks half of the openings, about 250, lie between
        // the two quarters: this bears 1 KB an opening.
        constexpr std::size_t BoundKilobytes = 256;
        if (std::min(rests_[1].size(), rests_[3].size()) < 5) {
            std::puts("too few rests to tell how memory goes");
            return true;
        }
        const auto median = [](std::vector<std::size_t> bytes) {
            std::ranges::sort(bytes);
            return bytes[bytes.size() / 2];
        };
        const std::size_t early = median(rests_[1]);
        const std::size_t late = median(rests_[3]);
        std::printf("at rest %zu KB in the second quarter, %zu KB in the last\n", early / 1024,
                    late / 1024);
        if (late <= early + BoundKilobytes * 1024) return true;
        std::puts("MEMORY GROWS");
        return false;
    }

    void Digest(std::uint64_t value) { digest_ = (digest_ ^ value) * 1099511628211U; }

    Application& application_;
    std::filesystem::path laidOut_;
    long wanted_;
    Dice dice_;
    Person person_;
    TempTree tree_;
    std::unique_ptr<AppState> app_;
    std::unique_ptr<Program> program_;
    int waiting_ = 0;            // the level of the loop that waits
    QPointer<QWidget> counted_;  // the display whose ticks are counted
    bool raceClosed_ = false;    // since the last rest
    long ticks_ = 0;
    long races_ = 0;
    long lives_ = 0;
    long actionsAtTick_ = 0;
    std::uint64_t digest_ = 14695981039346656037U;
    std::array<std::vector<std::size_t>, 5> rests_;  // bytes, by quarters of the ticks and the end of them
};

/// What the toolkit says, but for what it says of the screen in memory at every window.
void Tell(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message) {
    if (!message.startsWith("This plugin does not support"))
        std::fprintf(stderr, "toolkit: %s\n", qPrintable(message));
}

}  // namespace

}  // namespace keelview

int main(int argc, char** argv) {
    std::uint64_t seed = std::random_device()();
    long ticks = 200'000;
    for (int option = 2; option + 1 < argc; option += 2)
        if (std::string_view(argv[option]) == "--seed")
            seed = std::strtoull(argv[option + 1], nullptr, 10);
        else
            ticks = std::string_view(argv[option]) == "--ticks" ? std::atol(argv[option + 1]) : 0;
    if (argc % 2 != 0 || ticks <= 0) {
        std::fputs("usage: soak TREE [--seed N] [--ticks N]\n", stderr);
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
    // What would bring chance into it: another event loop, and tables in an order of their own.
    qputenv("QT_NO_GLIB", "1");
    qputenv("QT_HASH_SEED", "0");
    qInstallMessageHandler(keelview::Tell);
    keelview::black_box::Open();
    const QTemporaryDir folder;
    keelview::DrawOffScreen(folder, 1024, 768);
    keelview::Application application(argc, argv);
    keelview::Soak soak(application, argv[1], seed, ticks);
    return soak.Run() ? 0 : 1;
}
