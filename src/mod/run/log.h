// The one way in which messages leave the passes.
#pragma once

#include <string>
#include <string_view>

namespace ostrel {

/// Channels of a message, as bits of a mask.
enum Channel : unsigned {
  ConsoleOut = 1,
  ConsoleErr = 2,
  ErrorChannel = 4,
  LogChannel = 8,
};

// The masks in use.
inline constexpr unsigned toLog = LogChannel;
inline constexpr unsigned toErrorAndLog = ErrorChannel | LogChannel;

/// The first %s of almost every message.
inline constexpr const char* toolTag = "K52700";

/// Formats the arguments like printf and writes the text to each channel of the mask: console
/// output, console error, error channel, log channel, in this order. A channel without a stream
/// drops it. No write is tested.
[[gnu::format(printf, 2, 3)]] void logMessage(unsigned mask, const char* format, ...);

/// Sends a text as it stands, without an allocation of its own.
void logText(unsigned mask, std::string_view text);

/// Opens the two channels: the named files, truncated, or standard output and standard error for
/// empty names. A file that can't be opened, or that is the file `input`, which must not be lost,
/// leaves its channel without a stream.
void openLog(const std::string& logName, const std::string& errName, const std::string& input);

/// Writes out what the channels still hold and closes their files.
void closeLog();

}  // namespace ostrel
