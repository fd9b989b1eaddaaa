#include "session/documents.h"

#include <array>
#include <utility>

#include "base/bilingual.h"
#include "base/files.h"

namespace keelview {

bool OpenDocument(const Settings& settings, Services& services, const std::string& target) {
    const int result = services.platform.OpenDocument(target, settings.AppPath);
    if (result > 32) return true;
    static constexpr std::array<std::pair<int, Text>, 7> Messages{{
        {0, {"Not enough memory or resources.", "メモリまたはリソースが足りません。"}},
        {2, {"The file was not found.", "ファイルが見つかりません。"}},
        {3, {"The path was not found.", "パスが見つかりません。"}},
        {5, {"Access was denied.", "アクセスは拒否されました。"}},
        {11, {"The program file is damaged.", "不正な形式の実行ファイルです。"}},
        {27, {"The program for this kind of file is not known completely.", "関連付けが不完全です。"}},
        {31, {"There is no program for this kind of file.", "関連付けが指定されていません。"}},
    }};
    Text message{"The file cannot be opened.", "ファイルを開けません。"};
    for (const auto& [code, text] : Messages)
        if (code == result) message = text;
    services.dialogs.Ok(message.In(settings.UseEnglish), {});
    return false;
}

std::filesystem::path ManualPath(const Settings& settings) {
    const Text page{"help-e/index.html", "help/index.html"};
    return FindBelow(settings.AppPath, page.In(settings.UseEnglish));
}

}  // namespace keelview
