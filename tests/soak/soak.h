#pragma once

#include <QObject>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "display/application.h"
#include "session/app_state.h"
#include "shell/program.h"
#include "soak/black_box.h"
#include "soak/dice.h"
#include "soak/person.h"
#include "support/temp_tree.h"

namespace keelview {

/// Runs the whole program, over and over, under a person who does anything at all. Time is simulated: where
/// the program would wait for the person or the clock, either the person acts or the clock goes on. So the
/// film runs as fast as the machine can draw it, and a seed tells all that happens.
class Soak : public QObject {
  public:
    /// `laidOut` is a tree as tools/lay_out_tree.sh lays it out; it is copied, not written to.
    Soak(Application& application, const std::filesystem::path& laidOut, std::uint64_t seed, long ticks);

    /// Lives until all ticks are done. True if the memory stayed flat.
    bool Run();

  protected:
    bool event(QEvent* event) override;

  private:
    struct Rest {
        long Ticks = 0;
        std::size_t Bytes = 0;
    };
    void Live();
    void LayOut();
    void Step();
    void CountTicks();
    void Tick();
    void MeasureAtRest();
    void Report() const;
    bool MemoryIsFlat() const;
    void Note(const std::string& what);
    void Digest(std::uint64_t value) { digest_ = (digest_ ^ value) * 1099511628211U; }
    void DigestPicture(const Surface& surface);

    Application& application_;
    std::filesystem::path laidOut_;
    long wanted_;
    Dice dice_;
    BlackBox box_;
    Person person_;
    TempTree tree_;
    std::unique_ptr<AppState> app_;
    std::unique_ptr<Program> program_;
    int waiting_ = 0;          // the level of the loop that waits
    bool raceClosed_ = false;  // since the last rest
    long ticks_ = 0;
    long races_ = 0;
    long lives_ = 0;
    long actionsAtTick_ = 0;
    std::uint64_t digest_ = 14695981039346656037U;
    std::vector<Rest> rests_;
};

}  // namespace keelview
