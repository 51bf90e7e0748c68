#include "run/log.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <utility>

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
      file_ = std::make_unique<std::ofstream>(name, std::ios::binary | std::ios::trunc);
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

  void flush() {
    if (stream_ != nullptr) stream_->flush();
  }

  void close() {
    flush();
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
  int pauses = 0;
};

Channels& channels() {
  static Channels instance;
  return instance;
}

using Parts = std::initializer_list<std::string_view>;

/// A part ends at a NUL, which a name of a damaged file can hold.
void append(std::string& text, Parts parts) {
  for (const std::string_view part : parts) text += part.substr(0, part.find('\0'));
}

Listener& listener() {
  static Listener instance;
  return instance;
}

void sendLine(unsigned mask, std::string_view mark, std::string_view kind, Parts parts) {
  if (channels().pauses > 0) return;
  std::string text;
  append(text, parts);
  message(mask, {mark, toolTag, ": ", text, "\n"});
  if (listener()) listener()(kind, text);
}

}  // namespace

void message(unsigned mask, Parts parts) {
  std::string text;
  append(text, parts);
  logText(mask, text);
}

void note(Parts parts) {
  sendLine(toLog, "<Note> ", "note", parts);
}

void warning(Parts parts) {
  sendLine(toLog, "<Warning> ", "warning", parts);
}

void error(Parts parts) {
  sendLine(toErrorAndLog, "<ERROR> ", "error", parts);
}

void setListener(Listener values) {
  listener() = std::move(values);
}

bool logText(unsigned mask, std::string_view text) {
  Channels& to = channels();
  if (to.pauses > 0) return true;
  const bool isError = (mask & ErrorChannel) != 0 && to.err.write(text);
  const bool isLogged = (mask & LogChannel) != 0 && to.log.write(text);
  return isError || isLogged;
}

LogPause::LogPause() {
  ++channels().pauses;
}

LogPause::~LogPause() {
  --channels().pauses;
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

void flushLog() {
  channels().err.flush();
  channels().log.flush();
}

void closeLog() {
  channels().err.close();
  channels().log.close();
}

}  // namespace ostrel
