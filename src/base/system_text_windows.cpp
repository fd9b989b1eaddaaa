#include <windows.h>

#include "base/system_text.h"

namespace keelview {
namespace {

constexpr UINT CodePage = 932;

std::wstring Widen(UINT codePage, std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int needed =
        ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), length, wide.data(), needed);
    return wide;
}

/// Nothing if a character has no place in the code page.
std::optional<std::string> Narrow(UINT codePage, const std::wstring& wide) {
    const bool unicode = codePage == CP_UTF8;  // it has a place for all, and may not be asked
    const DWORD flags = unicode ? 0 : WC_NO_BEST_FIT_CHARS;
    BOOL lost = FALSE;
    const int length = static_cast<int>(wide.size());
    const int needed = ::WideCharToMultiByte(codePage, flags, wide.data(), length, nullptr, 0, nullptr,
                                             unicode ? nullptr : &lost);
    if (lost != FALSE) return std::nullopt;
    std::string text(static_cast<std::size_t>(needed), '\0');
    ::WideCharToMultiByte(codePage, flags, wide.data(), length, text.data(), needed, nullptr, nullptr);
    return text;
}

}  // namespace

std::string DecodeCodePage932(std::string_view bytes, std::string_view replacement) {
    std::string text;
    while (!bytes.empty()) {
        const bool lead = ::IsDBCSLeadByteEx(CodePage, static_cast<BYTE>(bytes.front())) != 0;
        const std::string_view character = bytes.substr(0, lead ? 2 : 1);
        const std::wstring wide = Widen(CodePage, character);
        text += wide.empty() ? std::string(replacement) : Narrow(CP_UTF8, wide).value_or("");
        bytes.remove_prefix(wide.empty() ? 1 : character.size());
    }
    return text;
}

std::optional<std::string> EncodeCodePage932(std::string_view utf8) {
    return Narrow(CodePage, Widen(CP_UTF8, utf8));
}

}  // namespace keelview
