// What happens to a race control file when the save that replaces it does not come to its end.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <iterator>
#include <new>
#include <random>
#include <string>
#include <thread>

#include "racedata/race_file.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

/// A folder in memory where there is one: a kill is seen there as well, and a flush costs nothing.
fs::path InMemory() {
    return fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
}

std::size_t Entries(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

struct SaveFaults : testing::Test {
    TempTree tree{InMemory()};

    /// Saves the race in its version of that number; its length grows and shrinks with it.
    static std::error_code SaveInto(const TempTree& into, int version) {
        RaceControl race;
        race.RaceFileName = "R.txt";
        race.RaceTitle1 = "Version " + std::to_string(version);
        race.AttachFile.Assign(version % MaxAttachments, std::string(60, 'a'));
        return SaveRaceFile(into.Root(), race);
    }
    std::error_code Save(int version) const { return SaveInto(tree, version); }
    std::string File() const { return tree.Read("raceadmin/R.txt"); }
    /// The bytes of a version when it is written without a fault.
    static std::string Whole(int version) {
        const TempTree other(InMemory());
        EXPECT_FALSE(SaveInto(other, version));
        return other.Read("raceadmin/R.txt");
    }
    fs::path Folder() const { return tree.Root() / "raceadmin"; }
};

/// Kills a child process and waits until it is gone.
void Kill(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

/// Lets a child that asked to be traced go on to its `steps`-th entry to or exit from the system, and kills
/// it there. False if it ended before.
bool KillAtStep(pid_t child, int steps) {
    int status = 0;
    for (int step = 0; ::waitpid(child, &status, 0) == child && WIFSTOPPED(status); ++step) {
        if (step == steps) {
            Kill(child);
            return true;
        }
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    }
    return false;
}

TEST_F(SaveFaults, AWriterKilledAtAnyStepLeavesTheOldFileOrTheNewOne) {
    const std::string old = Whole(1);
    const std::string next = Whole(7);
    int oldFiles = 0;
    int newFiles = 0;
    for (int steps = 1;; ++steps) {
        ASSERT_LT(steps, 1000);
        fs::remove_all(Folder());
        ASSERT_FALSE(Save(1));
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(77);
            ::raise(SIGSTOP);
            ::_exit(Save(7) ? 1 : 0);
        }
        if (!KillAtStep(child, steps)) {
            if (steps == 1) GTEST_SKIP() << "this system lets no process be traced";
            break;
        }
        const std::string found = File();
        ASSERT_TRUE(found == old || found == next) << "after " << steps << " steps:\n" << found;
        ++(found == old ? oldFiles : newFiles);
    }
    EXPECT_EQ(File(), next);  // the last one was not killed
    EXPECT_GT(oldFiles, 10);
    EXPECT_GT(newFiles, 1);  // the way back from the rename, and what follows it
}

TEST_F(SaveFaults, AThousandSavesWithRandomKillsLoseNothing) {
    const unsigned seed = std::random_device{}();
    std::printf("seed %u\n", seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> microseconds(0, 100);  // two or three saves
    // The version that the child has last been told is saved, in memory that it shares.
    void* shared = ::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    auto& saved = *new (shared) std::atomic<int>(1);
    ASSERT_FALSE(Save(1));
    int kills = 0;
    for (; saved < 1000; ++kills) {
        const int first = saved + 1;
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int version = first;; ++version) {
                if (Save(version)) ::_exit(1);
                saved = version;
            }
        }
        while (saved < first && ::waitpid(child, nullptr, WNOHANG) == 0) std::this_thread::yield();
        ASSERT_GE(saved, first) << "a save without a fault failed";
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        Kill(child);
        const std::string found = File();
        // The save that was told is there, unless the one after it has just replaced it.
        const bool isNext = found == Whole(saved + 1);
        ASSERT_TRUE(isNext || found == Whole(saved)) << "kill " << kills << ", saved " << saved << "\n"
                                                     << found;
        if (isNext) ++saved;
    }
    std::printf("%d saves, %d kills\n", saved.load(), kills);
    ::munmap(shared, sizeof(std::atomic<int>));
}

TEST_F(SaveFaults, WhatAKilledWriterLeftGoesWithALaterSave) {
    tree.Write("raceadmin/.write-old", "half a race");
    tree.Write("raceadmin/.write-young", "someone is writing this");
    fs::last_write_time(Folder() / ".write-old", fs::file_time_type::clock::now() - std::chrono::hours(4));
    ASSERT_FALSE(Save(1));
    EXPECT_FALSE(fs::exists(Folder() / ".write-old"));
    EXPECT_TRUE(fs::exists(Folder() / ".write-young"));
}

TEST_F(SaveFaults, AWriteThatStopsHalfwayLeavesTheOldFileAndNothingBesideIt) {
    ASSERT_FALSE(Save(1));
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    for (const rlim_t most : {0U, 1U, 100U, 3000U}) {
        const rlimit limit{most, before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        const std::error_code error = Save(49);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
        EXPECT_EQ(error, std::errc::file_too_large) << most;
        EXPECT_EQ(File(), Whole(1));
        EXPECT_EQ(Entries(Folder()), 1U);
    }
    ::signal(SIGXFSZ, SIG_DFL);
    EXPECT_FALSE(Save(49));
}

/// A disc of 64 KB in a folder, gone with the test.
struct SmallDisc {
    explicit SmallDisc(fs::path folder) : Place(std::move(folder)) {
        fs::create_directories(Place);
        Mounted = ::mount("keelview-test", Place.c_str(), "tmpfs", 0, "size=64k") == 0;
    }
    ~SmallDisc() {
        if (Mounted) ::umount(Place.c_str());
    }
    SmallDisc(const SmallDisc&) = delete;
    SmallDisc& operator=(const SmallDisc&) = delete;

    fs::path Place;
    bool Mounted = false;
};

TEST_F(SaveFaults, AFullDiscLeavesTheOldFileUntilThereIsRoomAgain) {
    const SmallDisc disc(Folder());
    if (!disc.Mounted) GTEST_SKIP() << "only root may mount a small disc";
    ASSERT_FALSE(Save(1));
    tree.Write("raceadmin/filler", std::string(1 << 20, '#'));  // as much as there is room for
    EXPECT_EQ(Save(49), std::errc::no_space_on_device);
    EXPECT_EQ(File(), Whole(1));
    EXPECT_EQ(Entries(Folder()), 2U);
    fs::remove(Folder() / "filler");
    EXPECT_FALSE(Save(49));
    EXPECT_EQ(File(), Whole(49));
}

TEST_F(SaveFaults, AFolderThatIsShutIsToldAndOneThatGoesIsMadeAnew) {
    ASSERT_FALSE(Save(1));
    fs::permissions(Folder(), fs::perms{0555});
    EXPECT_EQ(Save(2), std::errc::permission_denied);
    fs::permissions(Folder(), fs::perms{0755});
    EXPECT_EQ(File(), Whole(1));
    fs::remove_all(Folder());
    EXPECT_FALSE(Save(2));
    EXPECT_EQ(File(), Whole(2));
    fs::remove_all(Folder());
    tree.Write("raceadmin", "a file in the place of the folder");
    EXPECT_EQ(Save(3), std::errc::not_a_directory);
    EXPECT_EQ(Entries(tree.Root()), 1U);
}

}  // namespace
}  // namespace keelview
