#include "page/page_maker.h"

#include <zlib.h>

#include <algorithm>
#include <map>
#include <utility>

#include "analysis/race_numbers.h"
#include "base/files.h"
#include "base/html.h"
#include "base/paths.h"
#include "base/strings.h"
#include "base/text_encoding.h"
#include "racedata/packed_track.h"
#include "racedata/race_file.h"
#include "racedata/shore_file.h"
#include "racedata/track_reading.h"

namespace keelview {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t LongestTitle = 300;  // bytes
constexpr std::string_view TitleSlot = "{{title}}";
constexpr std::string_view RaceSlot = "{{race}}";

/// The files of a page by their places in it.
class PageFiles {
  public:
    explicit PageFiles(const std::filesystem::path& tree) : tree_(tree) {}

    void Put(const std::string& place, std::string bytes) {
        files_.insert_or_assign(place, std::move(bytes));
    }

    /// Takes a file of the tree with all its bytes; one that is not there is missed.
    void Take(std::string_view folder, std::string_view name, std::string_view place = {}) {
        if (name.empty()) return;
        if (auto bytes = Read(folder, name))
            Put(PlaceOf(place.empty() ? folder : place, name), *std::move(bytes));
    }

    /// Takes a text file, in UTF-8 with a mark that says so: a page knows no other encoding.
    void TakeText(std::string_view folder, std::string_view name) {
        if (name.empty()) return;
        if (const auto bytes = Read(folder, name))
            Put(PlaceOf(folder, name), std::string(ByteOrderMark) + DecodeText(*bytes).Utf8);
    }

    void TakeIfThere(std::string_view folder, std::string_view name, std::string_view place = {}) {
        if (IsFile(FindBelow(tree_, std::string(folder) + "/" + std::string(name))))
            Take(folder, name, place);
    }

    void Miss(const std::string& file) {
        if (std::ranges::find(missing_, file) == missing_.end()) missing_.push_back(file);
    }

    /// One file behind the other: the sizes of place and content, place and content.
    std::string Bytes() const {
        std::string bytes;
        const auto number = [&bytes](std::size_t value) {
            for (int i = 0; i < 4; ++i, value >>= 8U) bytes += static_cast<char>(value & 0xFFU);
        };
        for (const auto& [place, content] : files_) {
            number(place.size());
            number(content.size());
            bytes += place;
            bytes += content;
        }
        return bytes;
    }
    std::vector<std::string> TakeMissing() { return std::move(missing_); }

    /// A name below its folder; one with backslashes lies in folders.
    static std::string PlaceOf(std::string_view folder, std::string_view name) {
        std::string place = std::string(folder) + "/" + std::string(name);
        std::ranges::replace(place, '\\', '/');
        return place;
    }

  private:
    std::optional<std::string> Read(std::string_view folder, std::string_view name) {
        auto bytes = ReadWholeFile(FindBelow(tree_, PlaceOf(folder, name)));
        if (!bytes) Miss(PlaceOf(folder, name));
        return bytes;
    }

    const std::filesystem::path& tree_;
    std::map<std::string, std::string> files_;
    std::vector<std::string> missing_;
};

/// The tracks as they were read, each under the name that the race has for it. A file that is not there is
/// none in the page either.
void TakeTracks(const std::filesystem::path& tree, const RaceControl& race, PageFiles& files) {
    OneBased<BoatEntry, MaxBoats> boats = race.Boats;
    for (BoatEntry& boat : boats) boat.ClockOffset = 0.0;  // it is added where the page is read
    const OneBased<TrackReading> readings = ReadTracks(tree, boats, {});
    for (int boat = 1; boat <= boats.Count(); ++boat)
        if (readings[boat].Refused != Refusal::Missing)
            files.Put(PageFiles::PlaceOf("gpsdat", boats[boat].BoatFile), PackTrack(readings[boat]));
    for (const AbsentBoat& absent : race.AbsentBoats)
        files.Miss(PageFiles::PlaceOf("gpsdat", absent.Entry.BoatFile));
}

void TakeCells(const RaceNumbers& numbers, PageFiles& files) {
    for (const std::string& cell : numbers.race.MapFile) files.TakeIfThere("coastline", cell + ".cst");
}

/// The coast is handed on with its notice and its licences.
void TakeShores(const PageOrder& order, const std::vector<CoastArea>& areas, PageFiles& files) {
    const std::string shores = CutShores(order.Tree, areas);
    if (!shores.empty()) files.Put("coastline/" + std::string(WorldShoreFile), shores);
    for (const std::string_view name : {"NOTICE", "COPYING", "COPYING.LESSER"})
        files.TakeIfThere("coastline", name, "attachment/coastline");
}

void TakeSettings(const PageOrder& order, PageFiles& files) {
    files.Put("raceadmin/racefile.st", std::string(ByteOrderMark) + order.RaceNames.front() + "\r\n");
    if (order.UseEnglish) files.Put("raceadmin/ver.00", *order.UseEnglish ? "1,1\r\n" : "1,0\r\n");
    files.Put("gun.wav", {});  // the page makes its sound itself
}

std::string TitleOf(const RaceControl& race) {
    std::string title;
    for (const std::string* part : {&race.RaceTitle1, &race.RaceTitle2, &race.RaceTitle3})
        if (!part->empty()) title += (title.empty() ? "" : " ") + *part;
    if (title.empty()) title = race.RaceFileName;
    std::ranges::replace_if(
        title, [](char sign) { return static_cast<unsigned char>(sign) < ' '; }, ' ');
    if (title.size() <= LongestTitle) return title;
    std::size_t end = LongestTitle;
    while (end > 0 && (static_cast<unsigned char>(title[end]) & 0xC0U) == 0x80U) --end;
    return title.substr(0, end) + "...";
}

/// The text with something in place of a slot, which it has once.
bool Fill(std::string_view slot, const std::string& content, std::string& text) {
    const std::size_t at = text.find(slot);
    if (at == std::string::npos) return false;
    text.replace(at, slot.size(), content);
    return true;
}

}  // namespace

std::filesystem::path FindPageProgram(const std::vector<std::filesystem::path>& folders) {
    for (const std::filesystem::path& folder : folders) {
        std::filesystem::path file = folder / PathOf(PageProgramName);
        if (IsFile(file)) return file;
    }
    return {};
}

std::string PageFileName(std::string_view raceFile) {
    return std::string(raceFile.substr(0, raceFile.rfind('.'))) + ".html";
}

std::string Gzipped(std::string_view bytes) {
    z_stream packer{};
    constexpr int gzip = 15 + 16;
    if (deflateInit2(&packer, Z_BEST_COMPRESSION, Z_DEFLATED, gzip, 9, Z_DEFAULT_STRATEGY) != Z_OK)
        return {};
    gz_header head{};
    head.os = 255;  // unknown, as the bytes are to be the same wherever they were packed
    deflateSetHeader(&packer, &head);
    std::string packed(deflateBound(&packer, static_cast<uLong>(bytes.size())), '\0');
    packer.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    packer.avail_in = static_cast<uInt>(bytes.size());
    packer.next_out = reinterpret_cast<Bytef*>(packed.data());
    packer.avail_out = static_cast<uInt>(packed.size());
    const int status = deflate(&packer, Z_FINISH);
    packed.resize(status == Z_STREAM_END ? packer.total_out : 0);
    deflateEnd(&packer);
    return packed;
}

Page MakePage(const PageOrder& order, const std::filesystem::path& program) {
    Page page;
    std::string title;
    PageFiles files(order.Tree);
    std::vector<CoastArea> areas;
    for (const std::string& name : order.RaceNames) {
        RaceNumbers numbers;
        numbers.race.RaceFileName = name;
        LoadRace(order.Tree, numbers);
        if (!numbers.report.Opened) {
            page.Trouble = PageFiles::PlaceOf("raceadmin", name);
            return page;
        }
        if (title.empty()) title = TitleOf(numbers.race);
        files.TakeText("raceadmin", name);
        TakeTracks(order.Tree, numbers.race, files);
        files.TakeText("winddat", numbers.race.WindFileName);
        if (!numbers.race.AbsentWindFile.empty())
            files.Miss(PageFiles::PlaceOf("winddat", numbers.race.AbsentWindFile));
        for (const std::string& document : numbers.race.AttachFile)
            files.Take("attachment", Trim(document));
        if (!order.AttachMap) continue;
        TakeCells(numbers, files);
        if (HasAnyFix(numbers.tracks)) areas.push_back(CoastAreaOf(numbers));
    }
    TakeSettings(order, files);
    if (order.AttachMap) TakeShores(order, areas, files);
    page.Missing = files.TakeMissing();
    auto html = ReadWholeFile(program);
    // The race first, as a title may look like a slot.
    if (html && Fill(RaceSlot, Base128(Gzipped(files.Bytes())), *html) &&
        Fill(TitleSlot, HtmlText(title), *html))
        page.Html = *std::move(html);
    else
        page.Trouble = program.string();
    return page;
}

}  // namespace keelview
