#include "map/sea_colours.h"

#include <array>
#include <initializer_list>

namespace keelview {

namespace {

constexpr std::array<Colour, 6> SeaCells{Rgb(0, 255, 255), Rgb(0, 180, 240), Rgb(0, 115, 240),
                                         Rgb(0, 70, 205),  Rgb(0, 70, 136),  Rgb(0, 0, 96)};

constexpr Colour RubberBand = Rgb(255, 255, 128);  // of range and bearing, and of a line being set

}  // namespace

SeaColours::SeaColours(Shown& shown, RaceDisp& form, Stage& stage)
    : shown_(shown), form_(form), stage_(stage) {
    const auto cells = form_.ColourCells();
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        cells[cell]->SetBackColor(SeaCells[cell]);
        cells[cell]->OnClick = [this, cell] { ChooseSeaColour(cell); };
    }
}

void SeaColours::Repaint(Changed changed) {
    if (!Any(changed, Changed::Colours | Changed::Race)) return;
    for (Control* control : std::initializer_list<Control*>{
             &form_.Picture1, &form_.Picture2, &form_.Picture12, &form_.Picture6, &form_.Text15})
        control->SetBackColor(shown_.SeaColour);
    form_.Label7.SetForeColor(shown_.InkColour);
    form_.Line4.SetBorderColor(ReadableOn(shown_.SeaColour, RubberBand));
}

void SeaColours::ChooseSeaColour(std::size_t cell) {
    shown_.SeaColour = SeaCells[cell];
    shown_.InkColour = InkOn(shown_.SeaColour);
    stage_.Repaint(Changed::Colours);
}

}  // namespace keelview
