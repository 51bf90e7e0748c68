#include "run/system.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ostrel {
namespace {

constexpr std::array endingSignals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGXCPU, SIGALRM};

// What a signal has to remove: a copy of the name that no string can take away from under it.
std::array<char, PATH_MAX> pendingName{};
volatile std::sig_atomic_t isPending = 0;

extern "C" void removePending(int signal) {
  if (isPending != 0) unlink(pendingName.data());
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

/// Keeps the ending signals waiting as long as it lives.
class SignalsWait {
 public:
  SignalsWait() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before_);
  }
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;
  ~SignalsWait() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_{};
};

void watch(const std::string& name) {
  name.copy(pendingName.data(), name.size());
  pendingName[name.size()] = '\0';
  isPending = 1;
  for (const int signal : endingSignals) {
    // A signal that the caller of this process wants ignored, as nohup does, stays ignored.
    if (std::signal(signal, removePending) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
}

/// The name behind all links; the target need not exist yet. Nothing for what has no plain name.
std::optional<std::string> resolve(const std::string& target) {
  std::string name = target;
  constexpr int maxLinks = 40;
  for (int i = 0; i < maxLinks; ++i) {
    std::array<char, PATH_MAX> text{};
    const ssize_t length = readlink(name.c_str(), text.data(), text.size() - 1);
    if (length < 0) return name;
    const std::string link(text.data(), static_cast<std::size_t>(length));
    const std::size_t slash = name.rfind('/');
    const bool isRelative = !link.starts_with('/') && slash != std::string::npos;
    name = isRelative ? name.substr(0, slash + 1) + link : link;
  }
  return std::nullopt;
}

mode_t modeOfNewFile() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

/// Makes the new file look like the old one, or like any new file where there is none.
bool takeLooks(int file, const struct stat* old) {
  if (old == nullptr) return fchmod(file, modeOfNewFile()) == 0;
  struct stat own {};
  if (fstat(file, &own) != 0) return false;
  const bool hasOwner = own.st_uid == old->st_uid && own.st_gid == old->st_gid;
  if (!hasOwner && fchown(file, old->st_uid, old->st_gid) != 0) return false;
  return fchmod(file, old->st_mode & 07777) == 0;
}

/// Whether a new file in the folder of the target may take the place of an old one. A folder with
/// the sticky bit gives away only files of one's own.
bool mayReplace(const std::string& target, const struct stat* old) {
  if (old == nullptr) return true;
  if (!S_ISREG(old->st_mode) || old->st_nlink > 1) return false;
  if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;
  const std::size_t slash = target.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : target.substr(0, slash + 1);
  struct stat where {};
  if (stat(folder.c_str(), &where) != 0) return false;
  const uid_t self = geteuid();
  return (where.st_mode & S_ISVTX) == 0 || self == 0 || self == old->st_uid || self == where.st_uid;
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

void emptyFile(const char* name) noexcept {
  if (truncate(name, 0) != 0) return;  // a device or a FIFO holds nothing
}

std::optional<SideFile> SideFile::beside(const std::string& target) {
  const std::optional<std::string> resolved = resolve(target);
  if (!resolved || resolved->empty() || resolved->ends_with('/')) return std::nullopt;
  struct stat old {};
  const bool exists = stat(resolved->c_str(), &old) == 0;
  if (!exists && errno != ENOENT) return std::nullopt;
  if (!mayReplace(*resolved, exists ? &old : nullptr)) return std::nullopt;
  const std::size_t slash = resolved->rfind('/');
  std::string name = slash == std::string::npos ? "" : resolved->substr(0, slash + 1);
  name += ".ostrel-XXXXXX";
  if (name.size() >= pendingName.size()) return std::nullopt;
  const SignalsWait between;  // the file and the note of its name
  const int file = mkstemp(name.data());
  if (file < 0) return std::nullopt;
  SideFile side(std::move(name), *resolved);
  const bool hasLooks = takeLooks(file, exists ? &old : nullptr);
  close(file);
  if (!hasLooks) return std::nullopt;
  return side;
}

SideFile::SideFile(std::string name, std::string target)
    : name_(std::move(name)), target_(std::move(target)) {
  watch(name_);
}

SideFile::SideFile(SideFile&& other) noexcept
    : name_(std::exchange(other.name_, {})), target_(std::move(other.target_)) {}

SideFile::~SideFile() {
  if (name_.empty()) return;
  unlink(name_.c_str());
  isPending = 0;
}

bool SideFile::place() {
  if (rename(name_.c_str(), target_.c_str()) != 0) return false;
  isPending = 0;
  name_.clear();
  return true;
}

bool SideFile::placeEmpty() noexcept {
  return truncate(name_.c_str(), 0) == 0 && place();
}

}  // namespace ostrel
