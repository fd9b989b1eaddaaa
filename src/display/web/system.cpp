#include "display/web/system.h"

#include <cmath>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "display/web/page_calls.h"

namespace keelview {

namespace {

constexpr double TwipsPerPixel = 15.0;
constexpr int DriveIsFixed = 3;
constexpr int Opened = 33;
constexpr int NoSuchFile = 2;

ClockReading ReadingOf(double milliseconds) {
    const double seconds = std::floor(milliseconds / 1000.0);
    return {static_cast<CivilTime>(seconds), static_cast<int>(milliseconds - seconds * 1000.0)};
}

class PagePlatform : public Platform {
  public:
    // All files of a page lie below one folder without a name of its own.
    std::filesystem::path ProgramFolder() override { return "/race"; }
    bool UserIsJapanese() override { return page::PageIsJapanese(); }
    void SetLanguage(bool /*useEnglish*/) override {}
    int DriveType(const std::filesystem::path& /*folder*/) override { return DriveIsFixed; }
    ClockReading UtcNow() override { return ReadingOf(page::PageUtcMilliseconds()); }
    ClockReading LocalNow() override { return ReadingOf(page::PageLocalMilliseconds()); }
    double SteadySeconds() override { return page::PageSteadySeconds(); }

    int OpenDocument(const std::string& target, const std::filesystem::path& /*folder*/) override {
        if (target.starts_with("https://")) {
            page::PageOpen(target.data(), target.size());
            return Opened;
        }
        const std::filesystem::path path(target);
        const auto bytes = ReadWholeFile(path);
        if (!bytes) return NoSuchFile;
        const std::string name = path.filename().string();
        page::PageHandOver(name.data(), name.size(), bytes->data(), bytes->size());
        return Opened;
    }

    bool StartProgram(const std::filesystem::path& /*program*/) override { return false; }
    bool ClaimFile(const std::filesystem::path& /*file*/) override { return true; }
    void PlaySound(const std::filesystem::path& /*file*/) override { page::PageSound(); }

    ScreenInfo Screen() override {
        return {page::PageWindowSize(false) * TwipsPerPixel, page::PageWindowSize(true) * TwipsPerPixel,
                TwipsPerPixel, TwipsPerPixel};
    }

    // Nothing can be let in or waited for within an event of a page.
    void DeliverEvents() override {}
    void Pause(int /*milliseconds*/) override {}
    void CopyText(const std::string& text) override { page::PageCopy(text.data(), text.size()); }
    void SetBusyPointer(bool busy) override { page::PageBusy(busy); }
    void EndProcess() override { ending_ = true; }
    bool Ending() override { return ending_; }

  private:
    bool ending_ = false;
};

class PageDialogs : public Dialogs {
  public:
    void Ok(std::string_view text, std::string_view title) override {
        page::PageSay(title.data(), title.size(), text.data(), text.size());
    }
    bool YesNo(std::string_view text, std::string_view /*title*/) override {
        return page::PageAsk(text.data(), text.size());
    }
    bool Confirm(std::string_view text, std::string_view title) override { return YesNo(text, title); }

    std::optional<std::string> Input(std::string_view prompt, std::string_view /*title*/,
                                     std::string_view proposal) override {
        if (!page::PageInput(prompt.data(), prompt.size(), proposal.data(), proposal.size())) return {};
        return PageAnswer::Take();
    }

    /// The entries with their numbers, of which one is asked for.
    std::optional<std::size_t> Choose(const std::vector<std::string>& entries) override {
        std::string prompt;
        for (std::size_t i = 0; i < entries.size(); ++i)
            prompt += std::to_string(i + 1) + "  " + entries[i] + "\n";
        const auto number = StrictNumber(Input(prompt, {}, "1").value_or(""));
        if (!number || *number < 1 || *number > static_cast<double>(entries.size())) return {};
        return static_cast<std::size_t>(*number) - 1;
    }

    // A page reads no files of the person's.
    std::vector<std::filesystem::path> ChooseFiles(std::string_view /*title*/,
                                                   const std::filesystem::path& /*folder*/,
                                                   const std::vector<std::string>& /*patterns*/) override {
        return {};
    }
};

}  // namespace

std::string& PageAnswer::Kept() {
    static std::string kept;
    return kept;
}

char* PageAnswer::Room(std::size_t size) {
    Kept().assign(size, '\0');
    return Kept().data();
}

std::string PageAnswer::Take() {
    return std::exchange(Kept(), {});
}

std::unique_ptr<Platform> MakePagePlatform() {
    return std::make_unique<PagePlatform>();
}

std::unique_ptr<Dialogs> MakePageDialogs() {
    return std::make_unique<PageDialogs>();
}

extern "C" [[clang::export_name("GiveRoom")]] char* GiveRoom(std::size_t size) {
    return PageAnswer::Room(size);
}

}  // namespace keelview
