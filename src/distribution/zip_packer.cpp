#include "distribution/zip_packer.h"

#include <minizip/zip.h>

#include <QDateTime>
#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>

#include "base/files.h"

namespace keelview {

namespace {

namespace fs = std::filesystem;

/// A file in memory, as the packer goes back in it to fill in sizes.
struct Memory {
    std::string Bytes;
    std::size_t At = 0;
};

Memory& MemoryOf(voidpf stream) {
    return *static_cast<Memory*>(stream);
}

uLong WriteMemory(voidpf /*all*/, voidpf stream, const void* bytes, uLong size) {
    Memory& memory = MemoryOf(stream);
    memory.Bytes.resize(std::max(memory.Bytes.size(), memory.At + size));
    std::copy_n(static_cast<const char*>(bytes), size, memory.Bytes.data() + memory.At);
    memory.At += size;
    return size;
}

long SeekMemory(voidpf /*all*/, voidpf stream, ZPOS64_T offset, int origin) {
    Memory& memory = MemoryOf(stream);
    const std::size_t from = origin == ZLIB_FILEFUNC_SEEK_CUR   ? memory.At
                             : origin == ZLIB_FILEFUNC_SEEK_END ? memory.Bytes.size()
                                                                : 0;
    memory.At = from + static_cast<std::size_t>(offset);
    return 0;
}

struct Closer {
    void operator()(zipFile zip) const { zipClose(zip, nullptr); }
};
using Zip = std::unique_ptr<std::remove_pointer_t<zipFile>, Closer>;

/// Opened on memory that outlives it.
Zip OpenZip(Memory& memory) {
    zlib_filefunc64_def calls{};
    calls.opaque = &memory;
    calls.zopen64_file = [](voidpf all, const void*, int) { return all; };
    calls.zread_file = [](voidpf, voidpf, void*, uLong) { return uLong{0}; };
    calls.zwrite_file = WriteMemory;
    calls.ztell64_file = [](voidpf, voidpf stream) { return ZPOS64_T{MemoryOf(stream).At}; };
    calls.zseek64_file = SeekMemory;
    calls.zclose_file = [](voidpf, voidpf) { return 0; };
    calls.zerror_file = [](voidpf, voidpf) { return 0; };
    return Zip(zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &calls));
}

/// What a file is beside its bytes: the time of packing, and whether it can be started.
zip_fileinfo AboutFile(const fs::path& file) {
    constexpr uLong RegularFile = 0100644;
    constexpr uLong Program = 0100755;
    const QDateTime now = QDateTime::currentDateTime();
    zip_fileinfo about{};
    about.tmz_date.tm_year = now.date().year();
    about.tmz_date.tm_mon = now.date().month() - 1;
    about.tmz_date.tm_mday = now.date().day();
    about.tmz_date.tm_hour = now.time().hour();
    about.tmz_date.tm_min = now.time().minute();
    about.tmz_date.tm_sec = now.time().second();
    std::error_code error;
    const bool starts = (fs::status(file, error).permissions() & fs::perms::owner_exec) != fs::perms::none;
    about.external_fa = (starts ? Program : RegularFile) << 16U;
    return about;
}

bool AddFile(const Zip& zip, const std::string& name, const fs::path& file) {
    constexpr uLong MadeOnUnix = 3U << 8U | 20U;  // so that the rights of files are understood
    constexpr uLong NamesAreUtf8 = 1U << 11U;
    const auto bytes = ReadWholeFile(file);
    const zip_fileinfo about = AboutFile(file);
    return bytes &&
           zipOpenNewFileInZip4_64(zip.get(), name.c_str(), &about, nullptr, 0, nullptr, 0, nullptr,
                                   Z_DEFLATED, Z_DEFAULT_COMPRESSION, 0, -MAX_WBITS, DEF_MEM_LEVEL,
                                   Z_DEFAULT_STRATEGY, nullptr, 0, MadeOnUnix, NamesAreUtf8, 0) == ZIP_OK &&
           zipWriteInFileInZip(zip.get(), bytes->data(), static_cast<unsigned>(bytes->size())) == ZIP_OK &&
           zipCloseFileInZip(zip.get()) == ZIP_OK;
}

std::string Utf8Of(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

}  // namespace

std::error_code PackZip(const fs::path& folder, const fs::path& packed) {
    Memory memory;
    {
        const Zip zip = OpenZip(memory);
        for (const fs::path& file : FilesBelow(folder))
            if (!AddFile(zip, Utf8Of(file.lexically_relative(folder.parent_path())), file))
                return std::make_error_code(std::errc::io_error);
    }
    return WriteFileAtomically(packed, memory.Bytes);
}

}  // namespace keelview
