#include "instruments/data_view.h"

#include <algorithm>

namespace keelview {

DataView::DataView(AppState& app, RaceDisp& form, LegTables& tables)
    : app_(app), form_(form), tables_(tables) {
    for (OptionButton* option : {&form_.Option1, &form_.Option4, &form_.Option5, &form_.Option12})
        option->OnClick = [this] { tables_.ShowLegStatistics(); };
    form_.Command11.OnClick = [this] { Command11_Click(); };
    form_.PicTime.OnMouseDown = [this](const MouseEvent& event) { PicTime_MouseDown(event); };
    form_.PicTime.OnMouseMove = [this](const MouseEvent& event) { PicTime_MouseMove(event); };
    form_.PicTime.OnMouseUp = [this](const MouseEvent&) { dragY_ = 0; };
}

void DataView::Command11_Click() {
    form_.PicTime.Hide();
    const ViewKind back = tables_.PrevViewMode();
    app_.display.ViewMode = back;
    (back == ViewKind::Map ? form_.Option9 : form_.Option10).SetValue(true);
    if (!form_.Option7.Value()) form_.Timer1.SetEnabled(true);
}

void DataView::PicTime_MouseDown(const MouseEvent& event) {
    dragY_ = event.Y;
}

void DataView::PicTime_MouseMove(const MouseEvent& event) {
    form_.LowerBoatList();
    if (dragY_ <= 0) return;
    const double lowest = form_.MapSide() - tables_.StatPageHeight() + 5;
    form_.PicTime.SetTop(std::max(std::min(form_.PicTime.Top() + event.Y - dragY_, 5.0), lowest));
}

}  // namespace keelview
