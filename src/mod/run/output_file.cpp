#include "run/output_file.h"

#include <utility>

namespace ostrel {
namespace {

OutputFile*& openFile() {
  static OutputFile* file = nullptr;
  return file;
}

}  // namespace

OutputFile::~OutputFile() {
  leaveEmpty();
}

bool OutputFile::open(const std::string& name) {
  name_ = name;
  if (std::optional<SideFile> side = SideFile::beside(name)) {
    side_.emplace(*std::move(side));
    stream_.open(side_->name(), std::ios::trunc);
    if (!stream_.is_open()) side_.reset();
  }
  if (!side_ && !openInPlace()) return false;
  openFile() = this;
  return true;
}

bool OutputFile::openInPlace() {
  stream_.close();
  stream_.clear();
  stream_.open(name_, std::ios::trunc);
  if (!stream_.is_open()) name_.clear();
  return stream_.is_open();
}

bool OutputFile::write(const std::function<void(std::ostream&)>& content) {
  bool isWhole = fill(content);
  if (isWhole && side_ && !side_->place()) {
    side_.reset();
    isWhole = openInPlace() && fill(content);
  }
  if (!isWhole) {
    leaveEmpty();
    return false;
  }
  side_.reset();
  name_.clear();
  openFile() = nullptr;
  return true;
}

/// Every write is looked at, and so are the last ones, which flush and close make.
bool OutputFile::fill(const std::function<void(std::ostream&)>& content) {
  content(stream_);
  stream_.flush();
  const bool hasAll = stream_.good();
  stream_.close();
  return hasAll && !stream_.fail();
}

void OutputFile::leaveEmpty() noexcept {
  if (name_.empty()) return;
  if (!side_ || !side_->placeEmpty()) emptyFile(name_.c_str());
  name_.clear();
  openFile() = nullptr;
}

void OutputFile::abandon() noexcept {
  if (openFile() != nullptr) openFile()->leaveEmpty();
}

}  // namespace ostrel
