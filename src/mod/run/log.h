// The way in which messages leave the passes.
#pragma once

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace ostrel {

/// Channels of a message, as bits of a mask.
enum Channel : unsigned {
  ErrorChannel = 4,
  LogChannel = 8,
};

// The masks in use.
inline constexpr unsigned toLog = LogChannel;
inline constexpr unsigned toErrorAndLog = ErrorChannel | LogChannel;

/// Stands in almost every message.
inline constexpr std::string_view toolTag = "K52700";

/// Sends the parts, one behind the other, to each channel of the mask, the error channel first. A
/// channel without a stream drops them.
void message(unsigned mask, std::initializer_list<std::string_view> parts);

// Messages of one line, whose parts are joined behind the kind and the tag: note({name, " is so"})
// sends "<Note> K52700: NAME is so" to the log. An error goes to both channels.
void note(std::initializer_list<std::string_view> parts);
void warning(std::initializer_list<std::string_view> parts);
void error(std::initializer_list<std::string_view> parts);

/// Whoever wants to hear these messages too: `kind` is "note", "warning" or "error", `text` what
/// stands behind the tag. Without a function nobody does.
using Listener = std::function<void(std::string_view kind, std::string_view text)>;
void setListener(Listener listener);

/// Sends a text as it stands, without an allocation of its own. False if no channel has a stream:
/// before openLog, after closeLog, or where no file could be opened.
bool logText(unsigned mask, std::string_view text);

/// Opens the two channels: the named files, truncated, or standard output and standard error for
/// empty names. A file that can't be opened, or that is one of the files `kept`, which must not be
/// lost, leaves its channel without a stream. Two names of one file share one stream.
void openLog(const std::string& logName, const std::string& errName,
             std::span<const std::string> kept);

/// As long as one is there, nothing is sent: for work on a copy, which is nobody's news.
class LogPause {
 public:
  LogPause();
  ~LogPause();
  LogPause(const LogPause&) = delete;
  LogPause& operator=(const LogPause&) = delete;
};

/// Writes out what the channels still hold.
void flushLog();

/// Writes out what the channels still hold and closes their files.
void closeLog();

}  // namespace ostrel
