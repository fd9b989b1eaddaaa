#include "racedata/tracks/packed.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/text_encoding.h"

namespace keelview {

namespace {

constexpr std::size_t MostUnpacked = std::size_t{1} << 30U;
constexpr std::size_t MostRatio = 250;
constexpr std::size_t MostFiles = 1000;
constexpr int MostDepth = 2;

bool IsGz(std::string_view bytes) {
    return bytes.starts_with("\x1F\x8B");
}

bool IsZip(std::string_view bytes) {
    return bytes.starts_with("PK\3\4");
}

// ---- gz ----

enum class Unpacking { Whole, CutOff, TooLarge };

struct StreamEnd {
    void operator()(z_stream* stream) const { inflateEnd(stream); }
};

/// Unpacks all members of a gz up to `limit` bytes, or up to where it is broken.
Unpacking Gunzip(std::string_view bytes, std::size_t limit, std::string& unpacked) {
    z_stream stream{};
    constexpr int gzWrapper = 16;
    if (inflateInit2(&stream, gzWrapper + MAX_WBITS) != Z_OK) return Unpacking::CutOff;
    const std::unique_ptr<z_stream, StreamEnd> end(&stream);
    // zlib's type asks for it; the input is not written.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    std::size_t fed = 0;
    for (std::size_t made = 0;;) {
        constexpr std::size_t step = std::size_t{1} << 20U;
        if (stream.avail_in == 0) {
            stream.avail_in = static_cast<uInt>(std::min(bytes.size() - fed, step));
            fed += stream.avail_in;
        }
        if (made == unpacked.size()) {
            if (made >= limit) return Unpacking::TooLarge;
            unpacked.resize(std::min(limit, made + std::max(made, std::min(step, 8 * bytes.size()))));
        }
        const std::size_t room = std::min(unpacked.size() - made, step);
        stream.next_out = reinterpret_cast<Bytef*>(&unpacked[made]);
        stream.avail_out = static_cast<uInt>(room);
        const int outcome = inflate(&stream, Z_NO_FLUSH);
        made += room - stream.avail_out;
        const bool atEnd = stream.avail_in == 0 && fed == bytes.size();
        if (outcome == Z_STREAM_END) {
            // Another member may follow, or what a tape or a mailer has filled up with.
            const std::string_view rest = bytes.substr(fed - stream.avail_in);
            if (IsGz(rest) && inflateReset(&stream) == Z_OK) continue;
            unpacked.resize(made);
            return Unpacking::Whole;
        }
        if ((outcome != Z_OK && outcome != Z_BUF_ERROR) || (atEnd && stream.avail_out != 0)) {
            unpacked.resize(made);
            return Unpacking::CutOff;
        }
    }
}

// ---- zip ----

/// A file in memory, as minizip reads it.
struct MemoryFile {
    std::string_view Bytes;
    std::size_t At = 0;
    bool Short = false;  ///< the last read asked for more than there was
};

MemoryFile& FileOf(voidpf stream) {
    return *static_cast<MemoryFile*>(stream);
}

zlib_filefunc64_def MemoryFunctions(MemoryFile& file) {
    zlib_filefunc64_def functions{};
    functions.opaque = &file;
    functions.zopen64_file = [](voidpf opaque, const void*, int) { return opaque; };
    functions.zread_file = [](voidpf, voidpf stream, void* to, uLong size) {
        MemoryFile& from = FileOf(stream);
        const std::size_t count = std::min<std::size_t>(size, from.Bytes.size() - from.At);
        if (count > 0) std::memcpy(to, &from.Bytes[from.At], count);
        from.At += count;
        from.Short = count < size;
        return static_cast<uLong>(count);
    };
    functions.ztell64_file = [](voidpf, voidpf stream) { return ZPOS64_T{FileOf(stream).At}; };
    functions.zseek64_file = [](voidpf, voidpf stream, ZPOS64_T offset, int origin) -> long {
        MemoryFile& in = FileOf(stream);
        const std::size_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? in.At : in.Bytes.size();
        if (offset > in.Bytes.size() - base) return -1;
        in.At = base + static_cast<std::size_t>(offset);
        return 0;
    };
    functions.zclose_file = [](voidpf, voidpf) { return 0; };
    functions.zerror_file = [](voidpf, voidpf stream) { return FileOf(stream).Short ? 1 : 0; };
    return functions;
}

struct ZipCloser {
    void operator()(voidp zip) const { unzClose(zip); }
};
using Zip = std::unique_ptr<void, ZipCloser>;

/// A file in a zip, as its directory tells.
struct ZipEntry {
    std::string Name;
    unz64_file_pos At{};
    std::size_t Size = 0;   ///< unpacked
    bool Readable = false;  ///< neither encrypted nor packed in a way that is not known
};

/// Takes the files of a zip, and their unpacked sizes off `left`; false if they are too many or too large.
bool ListZip(const Zip& zip, std::size_t limit, std::vector<ZipEntry>& entries, std::size_t& left) {
    unz_global_info64 about{};
    if (unzGetGlobalInfo64(zip.get(), &about) != UNZ_OK) return true;
    if (about.number_entry > MostFiles) return false;
    std::size_t total = 0;
    for (int found = unzGoToFirstFile(zip.get()); found == UNZ_OK; found = unzGoToNextFile(zip.get())) {
        unz_file_info64 info{};
        std::array<char, 512> name{};
        ZipEntry entry;
        if (unzGetCurrentFileInfo64(zip.get(), &info, name.data(), name.size() - 1, nullptr, 0, nullptr,
                                    0) != UNZ_OK)
            break;
        if (unzGetFilePos64(zip.get(), &entry.At) != UNZ_OK || entries.size() == MostFiles) break;
        if (info.uncompressed_size > limit - total) return false;
        total += static_cast<std::size_t>(info.uncompressed_size);
        entry.Name = DecodeText(name.data()).Utf8;
        entry.Size = static_cast<std::size_t>(info.uncompressed_size);
        entry.Readable = (info.flag & 1U) == 0 &&
                         (info.compression_method == 0 || info.compression_method == Z_DEFLATED);
        entries.push_back(std::move(entry));
    }
    left -= total;
    return true;
}

/// Unpacks a file of a zip; false if it is broken.
bool Unzip(const Zip& zip, const ZipEntry& entry, std::string& unpacked) {
    if (!entry.Readable || unzGoToFilePos64(zip.get(), &entry.At) != UNZ_OK ||
        unzOpenCurrentFile(zip.get()) != UNZ_OK)
        return false;
    unpacked.resize(entry.Size);
    const int made = unzReadCurrentFile(zip.get(), unpacked.data(), static_cast<unsigned>(entry.Size));
    const bool sound = unzCloseCurrentFile(zip.get()) == UNZ_OK;  // compares the checksum
    return sound && made >= 0 && static_cast<std::size_t>(made) == entry.Size;
}

// ---- what they hold ----

std::string_view WithoutGz(std::string_view name) {
    return name.ends_with(".gz") ? name.substr(0, name.size() - 3) : name;
}

/// The name of a file without its folders and its ending.
std::string_view StemOf(std::string_view name) {
    name = WithoutGz(name.substr(name.find_last_of("/\\") + 1));  // npos + 1 is 0
    return name.substr(0, name.rfind('.'));
}

bool HasAny(const RaceHints& hints) {
    return hints.Gun || hints.LinePin || hints.LineBoat || !hints.Marks.empty() || hints.ZoneHours;
}

/// Reads the files of a packed one, one after another, so that one at a time lies unpacked.
class PackedReader {
  public:
    PackedReader(ReadUnpacked read, const ReadingProgress& progress) : read_(read), progress_(progress) {}

    TrackFileContent Read(std::string_view bytes, std::string_view name, int depth) {
        if (!IsPacked(bytes)) return read_(bytes, name);
        if (depth == MostDepth) return Refused(Refusal::TooLarge);
        // Whatever the sizes in the file say, not more is ever unpacked from it.
        const std::size_t limit =
            std::min(left_, bytes.size() * std::min(MostRatio, MostUnpacked / bytes.size() + 1));
        return IsGz(bytes) ? ReadGz(bytes, name, limit, depth) : ReadZip(bytes, limit, depth);
    }

  private:
    ReadUnpacked read_;
    const ReadingProgress& progress_;
    std::size_t left_ = MostUnpacked;
    double share_ = 0;  // of the outermost file
    bool stopped_ = false;

    static TrackFileContent Refused(Refusal why) {
        TrackFileContent content;
        content.Refused = why;
        return content;
    }

    TrackFileContent ReadGz(std::string_view bytes, std::string_view name, std::size_t limit, int depth) {
        std::string unpacked;
        const Unpacking outcome = Gunzip(bytes, limit, unpacked);
        if (outcome == Unpacking::TooLarge) return Refused(Refusal::TooLarge);
        left_ -= unpacked.size();
        TrackFileContent content = Read(unpacked, WithoutGz(name), depth + 1);
        if (outcome == Unpacking::CutOff) Skip(content.Left, SkipReason::Broken);
        return content;
    }

    TrackFileContent ReadZip(std::string_view bytes, std::size_t limit, int depth) {
        MemoryFile file{bytes};
        zlib_filefunc64_def functions = MemoryFunctions(file);
        const Zip zip(unzOpen2_64("", &functions));
        if (zip == nullptr) return Refused(Refusal::Broken);
        std::vector<ZipEntry> entries;
        if (!ListZip(zip, limit, entries, left_)) return Refused(Refusal::TooLarge);
        TrackFileContent all = Refused(Refusal::Packed);
        std::vector<std::string_view> files;  // that of each recording
        std::size_t read = 0;
        for (const ZipEntry& entry : entries) {
            if (stopped_) break;
            std::string unpacked;
            if (Unzip(zip, entry, unpacked))
                Join(Read(unpacked, entry.Name, depth + 1), all);
            else
                Skip(all.Left, SkipReason::Broken);
            files.resize(all.Recordings.size(), entry.Name);
            Tell(++read, entries.size(), depth);
        }
        if (all.Refused == Refusal::Packed && !all.Left.empty()) all.Refused = Refusal::Broken;
        if (!files.empty() && files.front() != files.back())
            for (std::size_t k = 0; k < files.size(); ++k)
                if (all.Recordings[k].Boat.empty()) all.Recordings[k].Boat = SoundName(StemOf(files[k]));
        return all;
    }

    /// A zip in a file is one step of that, but can be stopped inside.
    void Tell(std::size_t read, std::size_t all, int depth) {
        if (depth == 0) share_ = static_cast<double>(read) / static_cast<double>(all);
        stopped_ = stopped_ || (progress_ && !progress_(share_));
    }

    /// Adds what one file of several holds. What none of them gives is told as by the first of a known
    /// kind.
    static void Join(TrackFileContent&& one, TrackFileContent& all) {
        for (const Skipped& left : one.Left) Skip(all.Left, left.Why, left.Count);
        if (!HasAny(all.Hints)) all.Hints = std::move(one.Hints);
        const bool known = one.Refused != Refusal::Unknown && one.Refused != Refusal::Empty;
        const bool first = all.Recordings.empty() && !one.Recordings.empty();
        if (first || (known && all.Refused == Refusal::Packed)) {
            all.Format = std::move(one.Format);
            all.Refused = one.Refused;
        }
        std::move(one.Recordings.begin(), one.Recordings.end(), std::back_inserter(all.Recordings));
    }
};

}  // namespace

bool IsPacked(std::string_view bytes) {
    return IsGz(bytes) || IsZip(bytes);
}

TrackFileContent ReadPacked(std::string_view bytes, std::string_view name, ReadUnpacked read,
                            const ReadingProgress& progress) {
    return PackedReader(read, progress).Read(bytes, name, 0);
}

}  // namespace keelview
