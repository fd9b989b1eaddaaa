#include "display/qt/keys.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <utility>

namespace keelview {

namespace {

constexpr std::array<std::pair<int, int>, 21> Codes{
    {{Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},       {Qt::Key_Backtab, 9},  {Qt::Key_Return, 13},
     {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},    {Qt::Key_Control, 17}, {Qt::Key_Alt, 18},
     {Qt::Key_Pause, 19},    {Qt::Key_CapsLock, 20}, {Qt::Key_Escape, 27},  {Qt::Key_Space, 32},
     {Qt::Key_PageUp, 33},   {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},     {Qt::Key_Home, 36},
     {Qt::Key_Left, 37},     {Qt::Key_Up, 38},       {Qt::Key_Right, 39},   {Qt::Key_Down, 40},
     {Qt::Key_Delete, 46}}};

// The code of the first function key.
constexpr int FirstFunctionKey = 112;

}  // namespace

int KeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return FirstFunctionKey + (key - Qt::Key_F1);
    const auto found = std::ranges::find(Codes, key, &std::pair<int, int>::first);
    return found != Codes.end() ? found->second : 0;
}

}  // namespace keelview
