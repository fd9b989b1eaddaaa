#include "map/sea_colours.h"

#include <array>

namespace keelview {

namespace {

/// A sea colour and the ink that stands out from it once the person has chosen it.
struct SeaCell {
    Colour Sea;
    Colour Ink;
};
constexpr std::array<SeaCell, 6> SeaCells{{{Rgb(0, 255, 255), Black},
                                           {Rgb(0, 180, 240), White},
                                           {Rgb(0, 115, 240), White},
                                           {Rgb(0, 70, 205), White},
                                           {Rgb(0, 70, 136), White},
                                           {Rgb(0, 0, 96), White}}};

/// Everything that lies in or on the sea follows the map's colour.
void ApplySeaColour(AppState& app, RaceDisp& form, Colour sea) {
    app.display.SeaColour = sea;
    for (Control* control : std::initializer_list<Control*>{&form.Picture1, &form.Picture2, &form.Picture12,
                                                            &form.Picture6, &form.Text15})
        control->SetBackColor(sea);
    form.Label7.SetForeColor(app.display.InkColour);
}

}  // namespace

void ResetSeaColours(AppState& app, RaceDisp& form) {
    const auto cells = form.ColourCells();
    for (std::size_t cell = 0; cell < cells.size(); ++cell) cells[cell]->SetBackColor(SeaCells[cell].Sea);
    app.display.InkColour = White;
    ApplySeaColour(app, form, SeaCells[0].Sea);
}

void ChooseSeaColour(std::size_t cell, AppState& app, RaceDisp& form) {
    app.display.InkColour = SeaCells[cell].Ink;
    ApplySeaColour(app, form, SeaCells[cell].Sea);
}

}  // namespace keelview
