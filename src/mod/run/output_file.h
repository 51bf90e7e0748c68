// A result file that is there whole or not at all.
#pragma once

#include <fstream>
#include <functional>
#include <optional>
#include <string>

#include "run/system.h"

namespace ostrel {

/// A plain file is written beside its place and gets its name when it is complete, so that whoever
/// looks sees the old file or the new one. What has no such place (a device, a FIFO, a name among
/// several of one file, a folder that takes no new file) is written where it is. A file that was
/// opened and not written is empty afterwards. One is open at a time.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// False if no file of the name can be written; nothing has changed then. A plain file stays as
  /// it is until the new one is complete.
  bool open(const std::string& name);

  /// Lets `content` write the whole file, a second time if the first place turns out to be none.
  /// True if everything reached the file and the file has its name; otherwise it is empty, as far
  /// as it can still be emptied.
  bool write(const std::function<void(std::ostream&)>& content);

  /// Empties the open file of a process that is about to end without destructors; allocates
  /// nothing.
  static void abandon() noexcept;

 private:
  bool openBeside();
  bool fill(const std::function<void(std::ostream&)>& content);
  bool openInPlace(const std::string& name);
  void leaveEmpty() noexcept;

  std::string name_;  // empty unless a file is open
  std::optional<SideFile> side_;
  std::ofstream stream_;
};

}  // namespace ostrel
