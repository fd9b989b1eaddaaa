#include "instruments/view_switch.h"

#include <initializer_list>

namespace keelview {

ViewSwitch::ViewSwitch(RaceSession& session, DataView& dataView, WindEntry& windEntry)
    : app_(session.App()),
      form_(session.Display()),
      stage_(session.TheStage()),
      film_(session.TheFilm()),
      dataView_(dataView),
      windEntry_(windEntry) {
    form_.Option9.OnClick = [this] { Option9_Click(); };
    form_.Option10.OnClick = [this] { Option10_Click(); };
    form_.Option11.OnClick = [this] { Option11_Click(); };
}

void ViewSwitch::Option9_Click() {
    ShowInPlaceOfPage(ViewKind::Map);
    form_.Picture1.Show();
    form_.GPIC.Hide();
    form_.Check2.SetEnabled(film_.Stopped());
}

void ViewSwitch::Option10_Click() {
    ShowInPlaceOfPage(ViewKind::Graph);
    form_.GPIC.Show();
    form_.Picture1.Hide();
    EndMeasuring();
}

void ViewSwitch::ShowInPlaceOfPage(ViewKind view) {
    app_.shown.ViewMode = view;
    for (Control* part : std::initializer_list<Control*>{&form_.PicTime, &form_.VScroll2, &form_.HScroll3})
        part->Hide();
    film_.Release(Film::Hold::MapClick);
    film_.Release(Film::Hold::DataPage);
    windEntry_.ViewChanged();
    stage_.Repaint(Changed::Mode);
}

void ViewSwitch::Option11_Click() {
    film_.HoldFor(Film::Hold::DataPage);
    EndMeasuring();
    dataView_.ShowPage();
    form_.Picture1.Hide();
    form_.GPIC.Hide();
}

void ViewSwitch::EndMeasuring() {
    form_.Check2.SetValue(false);
    form_.Check2.SetEnabled(false);
}

}  // namespace keelview
