#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "analysis/found_race_entry.h"
#include "analysis/race_plan.h"
#include "import/track_chart.h"
#include "session/voice.h"

namespace keelview {

/// The chart of a plan with the race that was found in its tracks: of several the person chooses one,
/// corrects it on the chart and by its course, and ticks that it be taken, or all of them. What was not
/// found is told.
class ProposalPanel : public QWidget {
  public:
    ProposalPanel(QWidget* parent, const Voice& voice);

    /// Shows a plan, which must outlive the panel; a boat of it (from 0, or -1) is drawn thicker. The times
    /// of the races go with its clock.
    void ShowPlan(const RacePlan& plan, int chosen);

    /// Says that races are being looked for. What was found before stays meanwhile.
    void TellSearch();
    /// Shows what was found, which is on the plan's clock. A race that the person has corrected stays; what
    /// was found can be had by a button then.
    void ShowFinding(DayFinding finding);

    /// The race that is shown as it is now, if the person takes it; else null.
    const FoundRace* Taken() const;
    /// The person takes not it alone, but all of the day.
    bool TakesAll() const;
    const std::vector<FoundRace>& Races() const { return races_; }
    /// Gives a race what was found of one of them, on the plan's clock (TakeFoundRace).
    void Fill(const FoundRace& found, RaceControl& race) const;

    /// False, and the person is told, where the course that is typed for it names nothing of the race.
    bool CourseStands();

    /// The person has chosen another race, changed it, or taken it or not.
    std::function<void()> OnSet;

  private:
    void LayOut();
    QLayout* HeadRow();
    QLayout* ToolRow();
    QLayout* CourseRow();
    void Connect();
    QPushButton* ToolButton(const char* name, const Text& caption, const Text& hint);
    void ConnectTool(QPushButton& button, TrackChart::Tool tool);

    const FoundRace* Current() const;
    CivilTime Clock() const;
    void Adopt();
    void Correct(const std::function<void(FoundRace&)>& change);
    void CorrectOnChart(const std::function<void(FoundRace&)>& change);
    void Course_Typed();
    void Race_Chosen();
    void ShowRaces();
    void ShowCourse();
    void ShowLaps();
    void ShowCurrent(bool fit);
    void ShowChart(bool fit);
    std::string NamesOf(const std::vector<int>& boats) const;
    std::string RaceText(std::size_t which) const;
    std::string NotesText() const;

    const Voice& voice_;
    const RacePlan* plan_ = nullptr;
    DayFinding finding_;            // as it came last
    std::vector<FoundRace> races_;  // as they are now
    std::vector<Sentence> missing_;
    std::string lying_;       // the boats that were none
    UnixMs origin_ = 0;       // second 0 of the races
    std::string wrongEntry_;  // of the course as it is typed
    bool corrected_ = false;
    bool searched_ = false;
    bool searching_ = false;

    QCheckBox* take_ = nullptr;
    QComboBox* which_ = nullptr;
    QCheckBox* all_ = nullptr;
    TrackChart* chart_ = nullptr;
    std::vector<QPushButton*> tools_;
    QPushButton* asFound_ = nullptr;
    QLineEdit* course_ = nullptr;
    QLabel* laps_ = nullptr;
    QPlainTextEdit* notes_ = nullptr;
};

}  // namespace keelview
