// Runs in a world that fails: no exit code 0 without the whole output, and no file in between.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "support/program.h"
#include "support/sanitized.h"

namespace fs = std::filesystem;

namespace {

using Words = std::vector<std::string>;
const std::string old = "OLD GOOD OUTPUT\n";

class World : public testing::Test {
 protected:
  World() { writeFile(path("in.tt2"), readFile(std::string(OSTREL_CIRCUITS) + "/rd53.tt2")); }
  ~World() override { fs::remove_all(folder_); }

  std::string path(const std::string& name) const { return folder_ + "/" + name; }

  /// Runs a line of the shell in which $OSTREL is the program.
  ProgramResult shell(const std::string& line) const {
    return runIn(folder_, "/bin/sh", {"sh", "-c", "OSTREL=" OSTREL_PROGRAM "; " + line});
  }

  /// What a run leaves in a good world.
  std::string whole() {
    EXPECT_EQ(shell("$OSTREL -input in.tt2 -output whole -log log -percent pc").exitCode, 0);
    return readFile(path("whole"));
  }

  bool hasStrayFile() const {
    const fs::directory_iterator files(folder_);
    return std::any_of(begin(files), end(files), [](const fs::directory_entry& file) {
      return file.path().filename().string().starts_with(".ostrel-");
    });
  }

#ifdef FAILING_WORLD
  /// Runs over an old output with call number `at` of a kind failing; 0 counts the calls.
  ProgramResult runFailing(const std::string& kind, long at, int signal = 0,
                           const std::string& more = "") {
    writeFile(path("out"), old);
    return shell("LD_PRELOAD=" FAILING_WORLD " FAULT_KIND=" + kind +
                 " FAULT_SIGNAL=" + std::to_string(signal) + " FAULT_AT=" + std::to_string(at) +
                 (at == 0 ? " FAULT_COUNT=count" : "") +
                 " $OSTREL -input in.tt2 -output out -log log -percent pc " + more);
  }

  long countCalls(const std::string& kind, const std::string& more = "") {
    runFailing(kind, 0, 0, more);
    return std::stol(readFile(path("count")));
  }
#endif

 private:
  std::string folder_ = makeFolder();
};

// A node that only rows of 0 read is a told loss, which the verifier names.
TEST_F(World, LeavesNoOutputThatIsNotProven) {
  writeFile(path("lossy.tt2"),
            "#$ PINS 3 A B Y\n#$ NODES 2 N M\n.type fr\n.i 4\n.o 4\n.ilb A B N M\n.ob Y N.X1 N M\n"
            ".p 4\n1-10 0~~~\n---1 ~1~~\n11-- 1~~1\n01-- 1~~~\n.end\n");
  writeFile(path("out"), old);
  writeFile(path("pc"), old);
  const ProgramResult lossy = shell("$OSTREL -input lossy.tt2 -output out -percent pc --verify");
  EXPECT_EQ(lossy.exitCode, 1) << lossy.out;
  EXPECT_EQ(lossy.err, "<ERROR> K52700: the result is not proven, so the output stays empty\n");
  EXPECT_EQ(readFile(path("out")) + readFile(path("pc")), "");
  // A word that the verifier alone would know doesn't reach it.
  EXPECT_EQ(shell("$OSTREL -input lossy.tt2 -output out --lossless --verify --check").exitCode, 0);
  EXPECT_NE(readFile(path("out")), "");
  const ProgramResult alone =
      shell("cp $OSTREL . && PATH=/nowhere ./ostrel -input in.tt2 --verify");
  EXPECT_EQ(alone.exitCode, 1);
  EXPECT_EQ(alone.err, "<ERROR> K52700: ostrel-verify can't be run, so the output stays empty\n");
  EXPECT_EQ(readFile(path("in.tt3")), "");
  const ProgramResult fifo =
      shell("mkfifo f; cat in.tt2 >f & $OSTREL -input f -output out --verify");
  EXPECT_EQ(fifo.exitCode, 1);
  EXPECT_EQ(readFile(path("out")), "");
}

TEST_F(World, TellsOfADiskThatIsFull) {
  const ProgramResult device =
      shell("$OSTREL -input in.tt2 -output /dev/full -log log -percent pc");
  EXPECT_EQ(device.exitCode, 2);
  EXPECT_EQ(device.err,  // nobody knows what it holds, so it has no companion
            "<ERROR> K52700: failed to write /dev/full\a\n<Warning> K52700: failed to write pc\n");
  const ProgramResult companion = shell("$OSTREL -input in.tt2 -percent /dev/full -log log");
  EXPECT_EQ(companion.exitCode, 0);
  EXPECT_EQ(companion.err, "<Warning> K52700: failed to write /dev/full\n");
  if (isSanitized) return;
  writeFile(path("out"), old);
  const ProgramResult limit =
      shell("ulimit -f 0; exec $OSTREL -input in.tt2 -output out -log /dev/null -percent pc");
  EXPECT_EQ(limit.exitCode, 2);
  EXPECT_EQ(readFile(path("out")), "");
  EXPECT_FALSE(hasStrayFile());
}

TEST_F(World, KeepsMessagesOutOfItsFiles) {
  std::string design = readFile(path("in.tt2"));
  design[design.find(' ', design.find('\n', design.find(".p ")))] = '\n';  // the reader tells of it
  writeFile(path("in.tt2"), design);
  const std::string good = whole();
  writeFile(path("inPlace"), old);
  fs::create_hard_link(path("inPlace"), path("twin"));
  for (const std::string closed : {"<&-", ">&-", "2>&-", "<&- >&- 2>&-"}) {
    for (const std::string name : {"out", "inPlace"}) {
      const std::string log = name == "out" ? " " : " -log log -err err ";
      EXPECT_EQ(shell("$OSTREL -input in.tt2 -output " + name + log + closed).exitCode, 0);
      EXPECT_EQ(readFile(path(name)), good) << closed;
    }
  }
}

TEST_F(World, OutlivesTheReaderOfItsLog) {
  const std::string good = whole();
  const ProgramResult run =
      shell("{ $OSTREL -input in.tt2 -output out; echo $? > code; } | true; cat code");
  EXPECT_EQ(run.out, "0\n");
  EXPECT_EQ(readFile(path("out")), good);
}

TEST_F(World, ReplacesPlainFilesAndWritesTheRestInPlace) {
  const std::string good = whole();
  writeFile(path("real"), old);
  chmod(path("real").c_str(), 0640);
  fs::create_symlink("real", path("link"));
  fs::create_hard_link(path("real"), path("twin"));
  const std::string run = "$OSTREL -input in.tt2 -log log -output ";
  EXPECT_EQ(shell(run + "link").exitCode, 0);
  EXPECT_EQ(readFile(path("twin")), good);  // one of two names: written in place
  fs::remove(path("twin"));
  writeFile(path("real"), old);
  std::ifstream reader(path("real"));  // keeps the old file
  EXPECT_EQ(shell(run + "link").exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(path("link")));
  EXPECT_EQ(readFile(path("real")), good);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), old);
  EXPECT_EQ(fs::status(path("real")).permissions(), fs::perms(0640));
  EXPECT_EQ(shell("umask 027; " + run + "new").exitCode, 0);
  EXPECT_EQ(fs::status(path("new")).permissions(), fs::perms(0640));
  EXPECT_EQ(shell("mkfifo pipe; cat pipe > got & " + run + "pipe -percent pc; wait").exitCode, 0);
  EXPECT_EQ(readFile(path("got")), good);
  EXPECT_EQ(shell("{ " + run + "/dev/stdout; cat log; } >> got").exitCode, 0);
  EXPECT_EQ(readFile(path("got")), good + readFile(path("log")));
  EXPECT_FALSE(hasStrayFile());
}

TEST_F(World, KeepsLinksAndOwners) {
  const std::string good = whole();
  const std::string run = "$OSTREL -input in.tt2 -log log -output ";
  fs::create_directory(path("deep"));
  for (const std::string& target : {path("far"), std::string("../far"), std::string("../new")}) {
    writeFile(path("far"), old);
    fs::create_symlink(target, path("deep/link"));
    std::ifstream reader(path("deep/link"));
    EXPECT_EQ(shell(run + "deep/link").exitCode, 0);
    EXPECT_EQ(fs::read_symlink(path("deep/link")), target);
    EXPECT_EQ(readFile(path("deep/link")), good);
    EXPECT_NE(std::string(std::istreambuf_iterator<char>(reader), {}), good) << "in place";
    fs::remove(path("deep/link"));
  }
  fs::create_symlink("loop", path("loop"));
  EXPECT_EQ(shell(run + "loop").exitCode, 2);
  // Whoever has opened a file goes on with it.
  EXPECT_EQ(shell("{ " + run + "/dev/fd/3; echo more >&3; } 3>>open").exitCode, 0);
  EXPECT_EQ(readFile(path("open")), good + "more\n");
  if (geteuid() != 0) return;  // nobody else can give a file away
  for (const auto& [user, group] : {std::pair{7U, 8U}, {geteuid(), 8U}, {7U, getegid()}}) {
    writeFile(path("far"), old);
    EXPECT_EQ(chown(path("far").c_str(), user, group), 0);
    std::ifstream reader(path("far"));
    EXPECT_EQ(shell(run + "far").exitCode, 0);
    struct stat file {};
    EXPECT_EQ(stat(path("far").c_str(), &file), 0);
    EXPECT_EQ(std::pair(file.st_uid, file.st_gid), std::pair(user, group));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), old) << "in place";
  }
}

TEST_F(World, MakesNoCompanionOfAnOlderOutput) {
  fs::create_directory(path("out"));  // can't be opened
  writeFile(path("pc"), old);
  const ProgramResult run = shell("$OSTREL -input in.tt2 -output out -percent pc -log log");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("<Warning> K52700: failed to write pc\n"), std::string::npos);
  EXPECT_EQ(readFile(path("pc")), "");
}

TEST_F(World, KeepsItsOptionFiles) {
  const std::string words = "-input in.tt2 -output out\n";
  for (const char* option : {"-log", "-err", "-percent"}) {
    writeFile(path("opt"), words);
    EXPECT_EQ(shell(std::string("$OSTREL @opt ") + option + " ./opt").exitCode, 0);
    EXPECT_EQ(readFile(path("opt")), words) << option;
  }
}

TEST_F(World, TakesAFixedDate) {
  EXPECT_EQ(shell("SOURCE_DATE_EPOCH=86400 $OSTREL -input in.tt2 -output out -log log").exitCode,
            0);
  const std::string design = readFile(path("in.tt2"));
  const std::size_t date = design.find("#$ DATE");
  const std::string undated = design.substr(0, date) + design.substr(design.find('\n', date) + 1);
  writeFile(path("in.tt2"), undated);
  EXPECT_EQ(shell("SOURCE_DATE_EPOCH=86400 $OSTREL -input in.tt2 -output out -log log").exitCode,
            0);
  EXPECT_TRUE(readFile(path("out")).starts_with("#$ DATE Fri Jan  2 00:00:00 1970\n"));
}

#ifdef FAILING_WORLD
TEST_F(World, LosesNothingWhenCallsFail) {
  const std::string good = whole();
  const long calls = countCalls("file");
  ASSERT_GT(calls, 20);
  for (const std::string kind : {"file", "disk"}) {
    for (long at = 1; at <= calls; ++at) {
      const ProgramResult run = runFailing(kind, at);
      const std::string left = readFile(path("out"));
      EXPECT_TRUE(left == good || run.exitCode == 2) << kind << at << ": " << run.exitCode;
      EXPECT_TRUE(left == good || left == old || left.empty()) << kind << at << ": " << left;
      EXPECT_FALSE(hasStrayFile()) << kind << at;
    }
  }
}

// By a signal that a handler took, say of a library in front of this one.
TEST_F(World, GoesOnWithInterruptedCalls) {
  const std::string good = whole();
  const long calls = countCalls("interrupt", "--verify");
  ASSERT_GT(calls, 5);
  for (long at = 1; at <= calls; ++at) {
    EXPECT_EQ(runFailing("interrupt", at, 0, "--verify").exitCode, 0) << at;
    EXPECT_EQ(readFile(path("out")), good) << at;
  }
}

TEST_F(World, LeavesTheOldOutputOrTheNewOneWhenKilled) {
  const std::string good = whole();
  const long calls = countCalls("file");
  for (const int signal : {SIGUSR1, SIGKILL}) {  // the last one leaves a stray file
    for (long at = 1; at <= calls; ++at) {
      EXPECT_EQ(runFailing("file", at, signal).exitCode, 128 + signal) << at;
      const std::string left = readFile(path("out"));
      EXPECT_TRUE(left == good || left == old) << at << ": " << left;
      EXPECT_TRUE(signal == SIGKILL || !hasStrayFile()) << at;
    }
  }
}

TEST_F(World, OutlivesAFailedAllocation) {
  const std::string good = whole();
  const long calls = countCalls("memory");
  ASSERT_GT(calls, 200);
  constexpr long step = 29;
  for (long at = 1; at <= calls; at += at < 50 ? 1 : step) {
    const ProgramResult run = runFailing("memory", at);
    const std::string left = readFile(path("out"));
    const bool isWhole = run.exitCode == 0 && left == good;
    EXPECT_TRUE(isWhole || (run.exitCode == 2 && (left.empty() || left == old))) << at;
  }
}
#endif

}  // namespace
