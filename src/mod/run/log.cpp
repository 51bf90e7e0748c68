#include "run/log.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>

#include "run/same_file.h"

namespace ostrel {
namespace {

/// One channel: a file, a console stream, the stream of the other channel, or nothing.
class LogStream {
 public:
  void open(const std::string& name, std::ostream& fallback, std::span<const std::string> kept) {
    close();
    const auto isName = [&](const std::string& other) { return isSameFile(name, other); };
    if (name.empty()) {
      stream_ = &fallback;
    } else if (std::none_of(kept.begin(), kept.end(), isName)) {
      file_ = std::make_unique<std::ofstream>(name, std::ios::trunc);
      if (file_->is_open()) stream_ = file_.get();
    }
  }

  void share(const LogStream& other) {
    close();
    stream_ = other.stream_;
  }

  bool write(std::string_view text) {
    if (stream_ != nullptr) *stream_ << text;
    return stream_ != nullptr;
  }

  void close() {
    if (stream_ != nullptr) stream_->flush();
    file_.reset();
    stream_ = nullptr;
  }

 private:
  std::unique_ptr<std::ofstream> file_;
  std::ostream* stream_ = nullptr;
};

struct Channels {
  LogStream log;
  LogStream err;
};

Channels& channels() {
  static Channels instance;
  return instance;
}

std::string formatText(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  // One more character: vsnprintf ends with a NUL, and the string has room for it.
  std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  return text;
}

/// A line of parts, behind its kind and the tag.
void sendLine(unsigned mask, std::string_view kind, std::initializer_list<std::string_view> parts) {
  std::string line(kind);
  line.append(toolTag).append(": ");
  for (const std::string_view part : parts) line += part;
  logText(mask, line += '\n');
}

}  // namespace

void logMessage(unsigned mask, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  logText(mask, formatText(format, arguments));
  va_end(arguments);
}

void message(unsigned mask, std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  logText(mask, text);
}

void note(std::initializer_list<std::string_view> parts) {
  sendLine(toLog, "<Note> ", parts);
}

void warning(std::initializer_list<std::string_view> parts) {
  sendLine(toLog, "<Warning> ", parts);
}

void error(std::initializer_list<std::string_view> parts) {
  sendLine(toErrorAndLog, "<ERROR> ", parts);
}

bool logText(unsigned mask, std::string_view text) {
  Channels& to = channels();
  const bool isError = (mask & ErrorChannel) != 0 && to.err.write(text);
  const bool isLogged = (mask & LogChannel) != 0 && to.log.write(text);
  return isError || isLogged;
}

void openLog(const std::string& logName, const std::string& errName,
             std::span<const std::string> kept) {
  channels().log.open(logName, std::cout, kept);
  if (!logName.empty() && isSameFile(logName, errName)) {
    channels().err.share(channels().log);
  } else {
    channels().err.open(errName, std::cerr, kept);
  }
}

void closeLog() {
  channels().err.close();
  channels().log.close();
}

}  // namespace ostrel
