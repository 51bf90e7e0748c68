// A world that fails once. Loaded in front of the C library, it counts the calls that touch files,
// the allocations, or the calls that can be interrupted, and lets number FAULT_AT fail ("disk": all
// from there on), or sends the process FAULT_SIGNAL there. With FAULT_COUNT the calls are counted
// into a file of that name.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char* setting(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

enum class Call { File, Transfer, Wait, Memory };

struct Settings {
  bool countsMemory = std::strcmp(setting("FAULT_KIND"), "memory") == 0;
  bool interrupts = std::strcmp(setting("FAULT_KIND"), "interrupt") == 0;
  bool lasts = std::strcmp(setting("FAULT_KIND"), "disk") == 0;
  int signal = std::atoi(setting("FAULT_SIGNAL"));
  long place = std::atol(setting("FAULT_AT"));
};

/// Read at the first call, which can come before any constructor of this file.
const Settings& settings() {
  static const Settings values;
  return values;
}

long calls = 0;

bool isCounted(Call call) {
  if (settings().countsMemory) return call == Call::Memory;
  if (settings().interrupts) return call == Call::Transfer || call == Call::Wait;
  return call == Call::File || call == Call::Transfer;
}

bool isDue(Call call) {
  if (!isCounted(call)) return false;
  ++calls;
  const bool isFaulty = settings().lasts && settings().place != 0 && calls > settings().place;
  if (calls != settings().place && !isFaulty) return false;
  if (settings().signal != 0) {
    kill(getpid(), settings().signal);
    return false;  // it may have to wait
  }
  errno = call == Call::Memory ? ENOMEM : settings().interrupts ? EINTR : ENOSPC;
  return true;
}

template <class Function>
Function* real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

struct Report {
  ~Report() {
    const char* file = setting("FAULT_COUNT");
    if (*file == '\0') return;
    char text[32];
    const int length = std::snprintf(text, sizeof text, "%ld", calls);
    const int out = open(file, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (real<decltype(write)>("write")(out, text, static_cast<std::size_t>(length)) < 0) _exit(99);
  }
} report;

}  // namespace

extern "C" {

FILE* fopen(const char* name, const char* mode) {
  return isDue(Call::File) ? nullptr : real<decltype(fopen)>("fopen")(name, mode);
}
FILE* fopen64(const char* name, const char* mode) {
  return isDue(Call::File) ? nullptr : real<decltype(fopen)>("fopen64")(name, mode);
}
int fclose(FILE* file) {
  const bool fails = isDue(Call::File);
  const int result = real<decltype(fclose)>("fclose")(file);
  return fails ? EOF : result;
}
ssize_t read(int file, void* to, size_t count) {
  return isDue(Call::Transfer) ? -1 : real<decltype(read)>("read")(file, to, count);
}
ssize_t write(int file, const void* from, size_t count) {
  return isDue(Call::Transfer) ? -1 : real<decltype(write)>("write")(file, from, count);
}
ssize_t writev(int file, const iovec* from, int count) {
  return isDue(Call::Transfer) ? -1 : real<decltype(writev)>("writev")(file, from, count);
}
pid_t waitpid(pid_t child, int* status, int options) {
  return isDue(Call::Wait) ? -1 : real<decltype(waitpid)>("waitpid")(child, status, options);
}
int mkstemp(char* name) {
  return isDue(Call::File) ? -1 : real<decltype(mkstemp)>("mkstemp")(name);
}
int fchmod(int file, mode_t mode) noexcept {
  return isDue(Call::File) ? -1 : real<int(int, mode_t)>("fchmod")(file, mode);
}
int rename(const char* from, const char* to) noexcept {
  return isDue(Call::File) ? -1 : real<int(const char*, const char*)>("rename")(from, to);
}
int truncate(const char* name, off_t length) noexcept {
  return isDue(Call::File) ? -1 : real<int(const char*, off_t)>("truncate")(name, length);
}
void* __libc_malloc(size_t size);
void* malloc(size_t size) noexcept {
  return isDue(Call::Memory) ? nullptr : __libc_malloc(size);
}
}
