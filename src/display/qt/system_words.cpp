#include "display/qt/system_words.h"

#include <algorithm>
#include <string>
#include <utility>

#include "display/qt/convert.h"

namespace keelview {

namespace {

using Word = std::pair<std::string_view, std::string_view>;

constexpr Word Words[] = {
    {"OK", "OK"},
    {"Cancel", "キャンセル"},
    {"Yes", "はい(&Y)"},
    {"No", "いいえ(&N)"},
    {"Undo", "元に戻す(&U)"},
    {"Redo", "やり直し(&R)"},
    {"Cut", "切り取り(&T)"},
    {"Copy", "コピー(&C)"},
    {"Paste", "貼り付け(&P)"},
    {"Delete", "削除(&D)"},
    {"Select All", "すべて選択(&A)"},
    {"Look in:", "場所:"},
    {"File name:", "ファイル名:"},
    {"Files of type:", "種類:"},
    {"All Files (*)", "すべてのファイル (*)"},
    {"Back", "戻る"},
    {"Forward", "進む"},
    {"Parent Directory", "上のフォルダー"},
    {"Create New Folder", "新しいフォルダー"},
    {"List View", "一覧"},
    {"Detail View", "詳細"},
    {"Name", "名前"},
    {"Size", "サイズ"},
    {"Type", "種類"},
    {"Date Modified", "更新日時"},
    {"Computer", "コンピューター"},
    {"Scroll here", "ここへ移動"},
    {"Left edge", "左端"},
    {"Right edge", "右端"},
    {"Top", "先頭"},
    {"Bottom", "末尾"},
    {"Page left", "1画面左へ"},
    {"Page right", "1画面右へ"},
    {"Page up", "1画面上へ"},
    {"Page down", "1画面下へ"},
    {"Scroll left", "左へ"},
    {"Scroll right", "右へ"},
    {"Scroll up", "上へ"},
    {"Scroll down", "下へ"},
};

}  // namespace

QString JapaneseWords::translate(const char* /*context*/, const char* source, const char* /*remark*/,
                                 int /*count*/) const {
    std::string plain = source;
    std::erase(plain, '&');
    const auto* const found = std::ranges::find(Words, plain, &Word::first);
    return found == std::end(Words) ? QString() : ToQt(found->second);
}

}  // namespace keelview
