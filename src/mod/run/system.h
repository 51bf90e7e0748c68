// What only the operating system can do, in one place: everything else is portable C++.
#pragma once

#include <optional>
#include <string>

namespace ostrel {

/// Opens the null device in place of each standard stream that is closed, so that no file of the
/// run gets its number and with it the messages, and lets a write to a reader that went away fail
/// like any other, and a file that grows too large too. Called before anything else.
void guardStreams();

/// Writes a text to standard error without an allocation, past every buffer.
void writeToStandardError(const char* text) noexcept;

/// Empties a plain file and leaves everything else alone; allocates nothing.
void emptyFile(const char* name) noexcept;

/// A new, empty file beside the plain file that `target` names, through whatever links, with the
/// owner and mode of that file or those of a new one. It is removed if the process is ended by a
/// signal (SIGKILL aside) before it is placed or dropped. There is one at a time.
class SideFile {
 public:
  /// Nothing if the target can only be written in place: it is a device, a FIFO or a folder, has
  /// several hard links, may not be written, or its folder takes no file of ours in its stead.
  static std::optional<SideFile> beside(const std::string& target);

  SideFile(SideFile&& other) noexcept;
  SideFile& operator=(SideFile&&) = delete;
  SideFile(const SideFile&) = delete;
  SideFile& operator=(const SideFile&) = delete;
  ~SideFile();

  const std::string& name() const { return name_; }

  /// Gives the file the name of the target, in one step. False, with nothing changed, if that can't
  /// be done.
  bool place();

  /// Empties the file and places it; allocates nothing.
  bool placeEmpty() noexcept;

 private:
  SideFile(std::string name, std::string target);

  std::string name_;    // empty once it is gone
  std::string target_;  // behind all links
};

}  // namespace ostrel
