#include "session/documents.h"

#include <array>
#include <string_view>
#include <utility>

#include "base/bilingual.h"
#include "base/files.h"

namespace keelview {

bool OpenDocument(const Settings& settings, Services& services, const std::string& target) {
    const int result = services.platform.OpenDocument(target, settings.AppPath);
    if (result > 32) return true;
    // These messages exist in Japanese only.
    static constexpr std::array<std::pair<int, std::string_view>, 7> Messages{{
        {0, "メモリまたはリソースが足りません。"},
        {2, "ファイルが見つかりません。"},
        {3, "パスが見つかりません。"},
        {5, "アクセスは拒否されました。"},
        {11, "不正な形式の実行ファイルです。"},
        {27, "関連付けが不完全です。"},
        {31, "関連付けが指定されていません。"},
    }};
    std::string_view message = "ファイルを開けません。";
    for (const auto& [code, text] : Messages)
        if (code == result) message = text;
    services.dialogs.Ok(message, {});
    return false;
}

std::filesystem::path ManualPath(const Settings& settings) {
    const Text page{"help-e/index.html", "help/index.html"};
    return FindBelow(settings.AppPath, page.In(settings.UseEnglish));
}

}  // namespace keelview
