#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <ostream>
#include <spawn.h>
#include <streambuf>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "run/system.h"

// Not every system's header declares it.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace fs = std::filesystem;

namespace ostrel {
namespace {

/// The folder of a file, to stand in front of a name in it.
std::string folderOf(const std::string& name) {
  const std::size_t slash = name.rfind('/');
  return slash == std::string::npos ? "./" : name.substr(0, slash + 1);
}

/// The name behind all links; the file need not exist yet. Nothing for links without an end, and
/// for those of /proc, which stand for open files: whoever opened one goes on with the old one.
std::optional<std::string> behindLinks(std::string name) {
  constexpr int maxLinks = 40;
  for (int i = 0; i < maxLinks; ++i) {
    std::error_code isNoLink;
    const std::string link = fs::read_symlink(name, isNoLink);
    if (isNoLink) return name;
    const fs::path folder = fs::canonical(folderOf(name), isNoLink);
    if (isNoLink || (folder / "").native().starts_with("/proc/")) return std::nullopt;
    name = link.starts_with('/') ? link : folderOf(name).append(link);
  }
  return std::nullopt;
}

bool isStandardStream(const struct stat& file) {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    struct stat open {};
    if (fstat(stream, &open) == 0 && open.st_dev == file.st_dev && open.st_ino == file.st_ino) {
      return true;
    }
  }
  return false;
}

mode_t modeOfNewFile() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

/// Makes a new file look like the one in its place, or like any new file where there is none.
bool takeLooks(int file, const std::string& place) {
  struct stat old {};
  struct stat own {};
  if (stat(place.c_str(), &old) != 0) return fchmod(file, modeOfNewFile()) == 0;
  if (fstat(file, &own) != 0) return false;
  const bool hasOwner = own.st_uid == old.st_uid && own.st_gid == old.st_gid;
  if (!hasOwner && fchown(file, old.st_uid, old.st_gid) != 0) return false;
  return fchmod(file, old.st_mode & 07777) == 0;
}

/// Whether this process may do with a file or folder what the access mode says.
bool isAllowed(const std::string& name, int mode) {
  return faccessat(AT_FDCWD, name.c_str(), mode, AT_EACCESS) == 0;
}

bool isReplaceable(const std::string& place, const struct stat& old) {
  return S_ISREG(old.st_mode) && old.st_nlink == 1 && !isStandardStream(old) &&
         isAllowed(place, W_OK);
}

/// A stream into a file descriptor.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int file) : file_(file) { setp(buffer_.begin(), buffer_.end()); }

 protected:
  int overflow(int c) override {
    if (sync() != 0) return traits_type::eof();
    if (c != traits_type::eof()) sputc(static_cast<char>(c));
    return 0;
  }

  int sync() override {
    for (const char* next = pbase(); next != pptr();) {
      const ssize_t n = ::write(file_, next, static_cast<std::size_t>(pptr() - next));
      if (n < 0 && errno != EINTR) return -1;
      if (n > 0) next += n;
    }
    setp(buffer_.begin(), buffer_.end());
    return 0;
  }

 private:
  int file_;
  std::array<char, 1U << 16U> buffer_;
};

/// Starts a program whose standard input is an open file; its number, or -1.
pid_t start(const std::vector<std::string>& command, int input) {
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawnattr_t attributes;
  if (posix_spawn_file_actions_init(&files) != 0) return -1;
  posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
  posix_spawnattr_init(&attributes);
  sigset_t defaults;
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  sigaddset(&defaults, SIGXFSZ);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  pid_t child = -1;
  if (posix_spawnp(&child, words[0], &files, &attributes, words.data(), environ) != 0) child = -1;
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return child;
}

}  // namespace

void guardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // The lowest free number is the one that is missing.
    if (fcntl(stream, F_GETFD) < 0 && errno == EBADF && open("/dev/null", O_RDWR) < 0) return;
  }
}

void writeToStandardError(const char* text) noexcept {
  if (write(STDERR_FILENO, text, std::strlen(text)) < 0) return;  // nobody is left to be told
}

bool isErrorWatched() {
  return isatty(STDERR_FILENO) != 0;
}

void emptyFile(const char* name) noexcept {
  if (truncate(name, 0) == 0 || errno != ENOENT) return;
  const int file = open(name, O_WRONLY | O_CREAT, 0666);
  if (file >= 0) close(file);
}

std::optional<std::string> replaceablePlace(const std::string& name) {
  std::optional<std::string> place = behindLinks(name);
  if (!place || place->empty() || place->ends_with('/')) return std::nullopt;
  struct stat old {};
  const bool exists = stat(place->c_str(), &old) == 0;
  if (exists ? !isReplaceable(*place, old) : errno != ENOENT) return std::nullopt;
  if (!isAllowed(folderOf(*place), W_OK | X_OK)) return std::nullopt;
  return place;
}

struct SignalsWait::Before {
  sigset_t mask;
};

SignalsWait::SignalsWait() : before_(std::make_unique<Before>()) {
  sigset_t all;
  sigfillset(&all);
  sigprocmask(SIG_BLOCK, &all, &before_->mask);
}

SignalsWait::~SignalsWait() {
  sigprocmask(SIG_SETMASK, &before_->mask, nullptr);
}

SideFile::SideFile(std::string place) : place_(std::move(place)) {
  std::string name = folderOf(place_) + ".ostrel-XXXXXX";
  const int file = mkstemp(name.data());
  if (file < 0) return;
  name_ = std::move(name);
  if (!takeLooks(file, place_)) drop();
  close(file);
}

SideFile::~SideFile() {
  drop();
}

bool SideFile::moveToPlace() {
  if (rename(name_.c_str(), place_.c_str()) != 0) return false;
  name_.clear();
  return true;
}

void SideFile::drop() noexcept {
  if (!name_.empty()) unlink(name_.c_str());
  name_.clear();
}

bool isExecutable(const std::string& name) {
  return isAllowed(name, X_OK);
}

std::optional<int> runWithInput(const std::vector<std::string>& command,
                                const std::function<void(std::ostream&)>& content) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return std::nullopt;
  fcntl(ends[0], F_SETFD, FD_CLOEXEC);
  fcntl(ends[1], F_SETFD, FD_CLOEXEC);
  const pid_t child = start(command, ends[0]);
  close(ends[0]);
  if (child > 0) {
    DescriptorBuffer buffer(ends[1]);
    std::ostream stream(&buffer);
    content(stream);
    stream.flush();
  }
  close(ends[1]);
  int status = 0;
  while (child > 0 && waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return std::nullopt;
  }
  if (child <= 0 || !WIFEXITED(status)) return std::nullopt;
  return WEXITSTATUS(status);
}

}  // namespace ostrel
