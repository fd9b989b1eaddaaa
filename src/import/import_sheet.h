#pragma once

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "analysis/race_plan.h"
#include "import/background_work.h"
#include "import/boat_table.h"
#include "import/plan_searcher.h"
#include "import/proposal_panel.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// The sheet that makes a race of a heap of track files: shows what was found in them, and the race that
/// they hold, lets the person correct it, and writes the race, or each race of the day. Until OK nothing is
/// written, and on a fault nothing stays.
class ImportSheet : public QDialog {
  public:
    ImportSheet(const Settings& settings, Services& services);

    /// Shows the sheet for some files and folders, and more that the person adds, and waits for its end.
    /// The name of the race file that was written; empty where none was.
    std::string MakeRace(const std::vector<std::filesystem::path>& paths);

    void reject() override;

  private:
    QLineEdit* Field(const char* name, const Text& caption, QGridLayout& grid, int row, int column);
    void LayOut();
    void Connect();
    void AddFiles();
    void AddFolder();
    void Add(const std::vector<std::filesystem::path>& paths);
    void ShowAll();
    void ShowFields();
    void Search();
    void Boat_Set(int row);
    void TimeDiff_Typed();
    void Ok_Clicked();
    bool TakeFields(RaceControl& race);
    bool TakeTime(const QLineEdit& field, const Text& trouble, RaceTime& time);
    std::vector<RaceControl> RacesOfTheDay(const RaceControl& shown) const;
    bool Write(const std::vector<RaceControl>& races, bool replace);
    void SetBusy(bool busy);

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

    const Settings& settings_;
    Services& services_;
    Voice voice_;
    std::vector<std::filesystem::path> paths_;  // all that was handed in
    RacePlan plan_;
    std::string written_;  // the race file that is to be opened
    bool leaves_ = false;  // as soon as the work at hand is done

    QLineEdit* title_ = nullptr;
    QLineEdit* raceFile_ = nullptr;
    QLineEdit* start_ = nullptr;
    QLineEdit* finish_ = nullptr;
    QLineEdit* timeDiff_ = nullptr;
    QLabel* period_ = nullptr;
    BoatTable* boats_ = nullptr;
    ProposalPanel* proposal_ = nullptr;
    QLabel* unusedHead_ = nullptr;
    QListWidget* unused_ = nullptr;
    QPushButton* addFiles_ = nullptr;
    QPushButton* addFolder_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* stop_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* ok_ = nullptr;
    std::unique_ptr<BackgroundWork> work_;
    PlanSearcher searcher_;
};

}  // namespace keelview
