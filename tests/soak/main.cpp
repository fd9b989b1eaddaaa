// soak TREE [--seed N] [--ticks N]: runs the program under random clicks and keys until its film has made
// so many ticks. TREE is what tools/lay_out_tree.sh has laid out; it is copied.

#include <QApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "display/application.h"
#include "soak/soak.h"
#include "support/off_screen.h"

namespace {

struct Arguments {
    const char* Tree = nullptr;
    std::uint64_t Seed = std::random_device()();
    long Ticks = 200'000;
};

bool Read(int argc, char** argv, Arguments& arguments) {
    for (int i = 1; i < argc; ++i) {
        const bool seed = std::strcmp(argv[i], "--seed") == 0;
        const bool ticks = std::strcmp(argv[i], "--ticks") == 0;
        if ((seed || ticks) && i + 1 == argc) return false;
        if (seed)
            arguments.Seed = std::strtoull(argv[++i], nullptr, 10);
        else if (ticks)
            arguments.Ticks = std::atol(argv[++i]);
        else
            arguments.Tree = argv[i];
    }
    return arguments.Tree != nullptr && arguments.Ticks > 0;
}

/// What the toolkit says, but for what it says of the screen in memory at every window.
void Tell(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message) {
    if (!message.startsWith("This plugin does not support"))
        std::fprintf(stderr, "toolkit: %s\n", qPrintable(message));
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (!Read(argc, argv, arguments)) {
        std::fputs("usage: soak TREE [--seed N] [--ticks N]\n", stderr);
        return 2;
    }
    std::printf("seed %llu\n", static_cast<unsigned long long>(arguments.Seed));
    std::fflush(stdout);
    // What would bring chance into it: another event loop, and tables in an order of their own.
    qputenv("QT_NO_GLIB", "1");
    qputenv("QT_HASH_SEED", "0");
    qInstallMessageHandler(Tell);
    const QTemporaryDir folder;
    keelview::DrawOffScreen(folder, 1024, 768);
    keelview::Application application(argc, argv);
    keelview::Soak soak(application, arguments.Tree, arguments.Seed, arguments.Ticks);
    return soak.Run() ? 0 : 1;
}
