#include "racedata/refusal_text.h"

namespace keelview {

Text RefusalText(Refusal why) {
    switch (why) {
        case Refusal::None:
            return {};
        case Refusal::Empty:
            return {"an empty file", "空のファイルです"};
        case Refusal::Unknown:
            return {"no kind of track file that is known here", "対応していない形式のファイルです"};
        case Refusal::Velocitek:
            return {"a Velocitek file: not readable, export it as GPX",
                    "Velocitekのファイルは読み込めません。GPXで書き出してください"};
        case Refusal::Sail2:
            return {"a Sail2 file: not readable, export it as GPX",
                    "Sail2のファイルは読み込めません。GPXで書き出してください"};
        case Refusal::NoTimes:
            return {"positions without times", "位置データに時刻がありません"};
        case Refusal::NoFixes:
            return {"no GPS positions in it", "GPS位置データがありません"};
        case Refusal::TooLarge:
            return {"too large to be read", "ファイルが大きすぎます"};
        case Refusal::Broken:
            return {"damaged, or it cannot be opened", "ファイルが壊れているか、開けません"};
        case Refusal::Packed:
            return {"a packed file without a track file in it",
                    "圧縮ファイルの中に航跡ファイルがありません"};
        case Refusal::Missing:
            return {"not found", "ファイルがありません"};
        case Refusal::NoRecording:
            return {"no recording of this number or boat in the file",
                    "ファイルの中にこの番号または艇名の記録がありません"};
    }
    return {};
}

}  // namespace keelview
