// What only the operating system can do, in one place: everything else is portable C++.
// system_posix.cpp does it on Linux, macOS and the like, system_windows.cpp on Windows.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrel {

/// Opens the null device in place of each standard stream that is closed, so that no file of the
/// run gets its number and with it the messages, and lets a write to a reader that went away fail
/// like any other, and a file that grows too large too. Called before anything else.
void guardStreams();

/// Writes a text to standard error without an allocation, past every buffer.
void writeToStandardError(const char* text) noexcept;

/// Whether somebody watches standard error on a terminal.
bool isErrorWatched();

/// Empties a plain file, or makes it where there is none; leaves a device or a FIFO as it is.
/// Allocates nothing.
void emptyFile(const char* name) noexcept;

/// The plain file that a name leads to through whatever links, or the free place for one, if
/// another file may take its name. Nothing if it can only be written where it is: it is a device, a
/// FIFO or a folder, has several hard links, is open as a standard stream, may not be written, or
/// stands in a folder that takes no file of ours in its stead.
std::optional<std::string> replaceablePlace(const std::string& name);

/// Keeps every signal that can wait waiting for as long as it lives.
class SignalsWait {
 public:
  SignalsWait();
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;
  ~SignalsWait();

 private:
  struct Before;
  std::unique_ptr<Before> before_;
};

/// A new, empty file beside a place that replaceablePlace gave, with the owner and mode of the file
/// there or those of a new one. As long as it lives only SIGKILL ends the process: other signals
/// wait until the file has its place or is gone.
class SideFile {
 public:
  explicit SideFile(std::string place);
  SideFile(const SideFile&) = delete;
  SideFile& operator=(const SideFile&) = delete;
  ~SideFile();

  /// Empty if no such file can be made.
  const std::string& name() const { return name_; }

  /// Gives the file the name of the place, in one step. False, with nothing changed, if that can't
  /// be done.
  bool moveToPlace();

  /// Removes the file if it has not been moved; allocates nothing.
  void drop() noexcept;

 private:
  SignalsWait signals_;
  std::string place_;
  std::string name_;
};

/// Whether this process may start the program in a file; a name without the ending that programs
/// have on this system will do.
bool isExecutable(const std::string& name);

/// Starts a program, which is looked for on the path if its name has no folder, with what `content`
/// writes on its standard input, and waits for its end. `command` is the program and its arguments.
/// The exit code; nothing if it can't be started or is ended by a signal.
std::optional<int> runWithInput(const std::vector<std::string>& command,
                                const std::function<void(std::ostream&)>& content);

}  // namespace ostrel
