#include "instruments/data_view.h"

#include <algorithm>
#include <utility>

#include "instruments/data_page.h"

namespace keelview {

DataView::DataView(AppState& app, RaceDisp& form, Stage& stage) : app_(app), form_(form), stage_(stage) {
    for (OptionButton* option : {&form_.Option1, &form_.Option4, &form_.Option5, &form_.Option12})
        option->OnClick = [this] { ShowPage(); };
    form_.Command11.OnClick = [this] { Command11_Click(); };
    form_.PicTime.OnMouseDown = [this](const MouseEvent& event) { PicTime_MouseDown(event); };
    form_.PicTime.OnMouseMove = [this](const MouseEvent& event) { PicTime_MouseMove(event); };
    form_.PicTime.OnMouseUp = [this](const MouseEvent&) { dragY_ = 0; };
}

void DataView::ShowPage() {
    prevViewMode_ = std::exchange(app_.shown.ViewMode, ViewKind::Data);
    form_.PicTime.Show();
    stage_.Repaint(Changed::Mode);
}

/// Back to the map if the person came from there straight, else to the graphs.
void DataView::Command11_Click() {
    (prevViewMode_ == ViewKind::Map ? form_.Option9 : form_.Option10).SetValue(true);
}

void DataView::PicTime_MouseDown(const MouseEvent& event) {
    dragY_ = event.Y;
}

void DataView::PicTime_MouseMove(const MouseEvent& event) {
    form_.LowerBoatList();
    if (dragY_ <= 0) return;
    const double lowest = form_.MapSide() - StatPageHeight(app_.race, form_.MapSide()) + DataPageTop;
    form_.PicTime.SetTop(std::max(std::min(form_.PicTime.Top() + event.Y - dragY_, DataPageTop), lowest));
}

}  // namespace keelview
