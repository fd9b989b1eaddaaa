#pragma once

#include "instruments/side_tabs.h"
#include "session/race_session.h"

namespace keelview {

/// The side panel with the coach's answers: its tabs, its page, and what a person does there. What is shown
/// follows the film; a click on a boat chooses it, and leads film and map there.
class SidePanel : public Instrument {
  public:
    explicit SidePanel(RaceSession& session);

    void Repaint(Changed changed) override;
    void Show(const Moment& now) override;

  private:
    void Command14_Click();
    void Command15_Click();
    void Command16_Click();
    void Command17_Click();
    void Picture17_MouseDown(const MouseEvent& event);
    void VScroll4_Change();
    bool IsOut() const;
    int Tab() const;
    SideBlocks Blocks(const CoachAnswers& answers) const;
    SideFocus Focus() const;
    void Draw(bool whole);
    void DrawProgress();
    void MarkTurns(const CoachAnswers* answers);
    void PlaceCursor(const CoachAnswers& answers);
    void SavePage(const CoachAnswers& answers);
    Picture Paint(const SidePicture& picture);
    void TakeWind(const CoachAnswers& answers);

    RaceSession& session_;
    AppState& app_;
    RaceDisp& form_;
    Coach& coach_;
    SidePage page_;
    int chosen_ = 0;
    int beside_ = 0;
    double shownAt_ = 0.0;  ///< the second of the film that the page shows
};

}  // namespace keelview
