#include "instruments/screen_capture.h"

#include <algorithm>
#include <string>

#include "base/files.h"
#include "base/numbers.h"
#include "session/documents.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr Text CaptureFile{"gpsdat/untitled.bmp", "gpsdat/無題.bmp"};

constexpr double Margin = 5.0;
constexpr double ColumnGap = 10.0;  // from the view to the column at its right
constexpr double TextHeight = 35.0;
constexpr double RowPitch = 16.0;
constexpr double RowHeight = 13.0;
constexpr double SmallestPoints = 6.0;

constexpr Text NotWritten{"The picture could not be written.", "画像ファイルを書き込めません。"};
constexpr Text WrittenTo{"The picture was saved here:", "画像ファイルの保存先："};

}  // namespace

ScreenCapture::ScreenCapture(const AppState& app, RaceDisp& form, Services& services, const Voice& voice)
    : app_(app), form_(form), services_(services), voice_(voice) {
    form_.Command10.OnClick = [this] { Command10_Click(); };
}

void ScreenCapture::Command10_Click() {
    const auto file = FindBelow(app_.settings.AppPath, voice_.In(CaptureFile));
    if (!Compose().SaveBitmap(file))
        voice_.Say(NotWritten, file.string());
    else if (!OpenDocument(app_.settings, services_, file.string()))
        voice_.Say(WrittenTo, file.string());  // a person can open it there by other means
}

Picture ScreenCapture::Compose() {
    Surface& sheet = form_.Picture13;
    const Surface& overview = form_.Picture6;
    const double left = form_.Picture1.Width() + ColumnGap;
    const double below = overview.Height() + Margin;
    const double height = form_.Picture1.Height() + 2 * Margin;
    const int rows = std::max(FloorToInt((height - below - TextHeight) / RowPitch), 1);
    const int columns = std::max((app_.race.Boats.Count() + rows - 1) / rows, 1);
    sheet.Move(0, 0, left + columns * (overview.Width() + Margin), height);
    sheet.Cls();
    sheet.PaintPicture(overview.Image(), left, Margin);
    PrintRace(left, below);
    PaintBoatColours(left, below + TextHeight, rows);
    PaintView();
    const Picture picture = sheet.Image();
    sheet.Move(0, 0, 1, 1);
    return picture;
}

void ScreenCapture::PrintRace(double left, double top) {
    form_.Picture13.ForeColor = Black;
    PrintFitted(left, top, voice_.Str({"File:  ", "ファイル名： "}) + app_.race.RaceFileName);
    PrintFitted(left, form_.Picture13.CurrentY, voice_.Str({"Time:  ", "日時： "}) + form_.Text1.Text());
}

/// Prints a line in letters small enough for the column, if that can be.
void ScreenCapture::PrintFitted(double left, double top, const std::string& line) {
    Surface& sheet = form_.Picture13;
    const double points = sheet.FontSize;
    while (left + sheet.TextWidth(line) > sheet.ScaleWidth() && sheet.FontSize > SmallestPoints)
        sheet.FontSize -= 0.75;
    sheet.PrintAt(left, top, line);
    sheet.FontSize = points;
}

/// In columns of so many rows.
void ScreenCapture::PaintBoatColours(double left, double top, int rows) {
    Surface& sheet = form_.Picture13;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        const int column = (boat - 1) / rows;
        const double x = left + column * (form_.Picture6.Width() + Margin);
        const double y = top + (boat - 1) % rows * RowPitch;
        DrawNameField(sheet, boat, {x, y}, {x + form_.Picture6.Width() - 2, y + RowHeight},
                      app_.race.Boats[boat].BoatName);
    }
}

void ScreenCapture::PaintView() {
    Surface& sheet = form_.Picture13;
    switch (app_.shown.ViewMode) {
        case ViewKind::Map:
            sheet.PaintPicture(form_.Picture1.Image(), Margin, Margin);
            for (int row = 0; row < app_.race.Boats.Count(); ++row) {
                const Sprite& boat = form_.Boat[row];
                if (boat.Visible())
                    sheet.PaintPicture(boat.Image(), boat.Left() + Margin, boat.Top() + Margin);
            }
            break;
        case ViewKind::Graph:
            sheet.PaintPicture(form_.GPIC.Image(), Margin, Margin);
            break;
        case ViewKind::Data:
            sheet.PaintPicture(form_.PicTime.Image(), Margin, form_.PicTime.Top());
            break;
    }
}

}  // namespace keelview
