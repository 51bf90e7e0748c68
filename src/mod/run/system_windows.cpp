#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <ostream>
#include <process.h>
#include <streambuf>
#include <sys/stat.h>
#include <system_error>
#include <utility>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "run/system.h"

namespace fs = std::filesystem;

namespace ostrel {
namespace {

constexpr std::array<int, 3> standardStreams = {0, 1, 2};

std::string folderOf(const std::string& name) {
  const std::size_t slash = name.find_last_of("/\\:");
  return slash == std::string::npos ? "./" : name.substr(0, slash + 1);
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
      const int n = _write(file_, next, static_cast<unsigned>(pptr() - next));
      if (n <= 0) return -1;
      next += n;
    }
    setp(buffer_.begin(), buffer_.end());
    return 0;
  }

 private:
  int file_;
  std::array<char, 1U << 14U> buffer_;
};

/// A word as a program's start-up takes it out of the one text that Windows hands on: in quotes,
/// with backslashes doubled where a quote follows.
std::string quoted(const std::string& word) {
  std::string result = "\"";
  std::size_t backslashes = 0;
  for (const char c : word) {
    if (c == '"') result.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    result += c;
  }
  return result.append(backslashes, '\\') + '"';
}

/// Starts a program whose standard input is an open file; its handle, or -1.
std::intptr_t start(const std::vector<std::string>& command, int input) {
  std::vector<std::string> texts;
  for (const std::string& word : command) texts.push_back(quoted(word));
  std::vector<const char*> words;
  for (const std::string& text : texts) words.push_back(text.c_str());
  words.push_back(nullptr);
  const int own = _dup(0);
  if (own < 0 || _dup2(input, 0) != 0) return -1;
  const std::intptr_t child = _spawnvp(_P_NOWAIT, command.front().c_str(), words.data());
  _dup2(own, 0);
  _close(own);
  return child;
}

}  // namespace

void guardStreams() {
  for (const int stream : standardStreams) {
    // The lowest free number is the one that is missing.
    if (_get_osfhandle(stream) < 0 && _open("NUL", _O_RDWR) < 0) return;
    _setmode(stream, _O_BINARY);
  }
}

void writeToStandardError(const char* text) noexcept {
  if (_write(2, text, static_cast<unsigned>(std::strlen(text))) < 0) return;  // nobody is left
}

bool isErrorWatched() {
  return _isatty(2) != 0;
}

void emptyFile(const char* name) noexcept {
  const int file = _open(name, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
  if (file >= 0) _close(file);
}

std::optional<std::string> replaceablePlace(const std::string& name) {
  if (name.empty() || name.ends_with('/') || name.ends_with('\\')) return std::nullopt;
  std::error_code fault;
  const fs::file_status link = fs::symlink_status(name, fault);
  if (link.type() == fs::file_type::not_found) return name;
  const bool isOnePlainFile = fs::is_regular_file(link) && fs::hard_link_count(name, fault) == 1;
  if (!isOnePlainFile || _access(name.c_str(), 2) != 0) return std::nullopt;
  return name;
}

/// Windows ends a process without asking it; only the interrupt key can wait.
struct SignalsWait::Before {
  void (*interrupt)(int);
};

namespace {
std::atomic<bool> wasInterrupted = false;
}

SignalsWait::SignalsWait() : before_(std::make_unique<Before>()) {
  before_->interrupt = std::signal(SIGINT, [](int) { wasInterrupted = true; });
}

SignalsWait::~SignalsWait() {
  std::signal(SIGINT, before_->interrupt);
  if (wasInterrupted.exchange(false)) std::raise(SIGINT);
}

SideFile::SideFile(std::string place) : place_(std::move(place)) {
  constexpr int maxTries = 1000;
  const std::string stem = folderOf(place_) + ".ostrel-" + std::to_string(_getpid()) + "-";
  for (int i = 0; i < maxTries; ++i) {
    const std::string name = stem + std::to_string(i);
    const int file = _open(name.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL, _S_IREAD | _S_IWRITE);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return;
    _close(file);
    name_ = name;
    return;
  }
}

SideFile::~SideFile() {
  drop();
}

bool SideFile::moveToPlace() {
  if (MoveFileExA(name_.c_str(), place_.c_str(), MOVEFILE_REPLACE_EXISTING) == 0) return false;
  name_.clear();
  return true;
}

void SideFile::drop() noexcept {
  if (!name_.empty()) _unlink(name_.c_str());
  name_.clear();
}

bool isExecutable(const std::string& name) {
  std::error_code ignored;
  return fs::is_regular_file(name, ignored) || fs::is_regular_file(name + ".exe", ignored);
}

std::optional<int> runWithInput(const std::vector<std::string>& command,
                                const std::function<void(std::ostream&)>& content) {
  std::array<int, 2> ends{};
  if (_pipe(ends.data(), 1U << 16U, _O_BINARY | _O_NOINHERIT) != 0) return std::nullopt;
  const std::intptr_t child = start(command, ends[0]);
  _close(ends[0]);
  if (child != -1) {
    DescriptorBuffer buffer(ends[1]);
    std::ostream stream(&buffer);
    content(stream);
    stream.flush();
  }
  _close(ends[1]);
  int status = 0;
  if (child == -1 || _cwait(&status, child, 0) < 0) return std::nullopt;
  return status;
}

}  // namespace ostrel
