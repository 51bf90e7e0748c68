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
  if (!replaceablePlace(name) && !openInPlace(name)) return false;
  name_ = name;
  openFile() = this;
  return true;
}

bool OutputFile::openInPlace(const std::string& name) {
  stream_.close();
  stream_.clear();
  stream_.open(name, std::ios::binary | std::ios::trunc);
  return stream_.is_open();
}

/// Opens what the content goes to: looks again for a place to write beside, since a run takes time.
bool OutputFile::openBeside() {
  if (std::optional<std::string> place = replaceablePlace(name_)) {
    side_.emplace(*std::move(place));
    if (!side_->name().empty()) stream_.open(side_->name(), std::ios::binary | std::ios::trunc);
    if (stream_.is_open()) return true;
    side_.reset();
  }
  return openInPlace(name_);
}

bool OutputFile::write(const std::function<void(std::ostream&)>& content) {
  bool isWhole = (stream_.is_open() || openBeside()) && fill(content);
  if (isWhole && side_ && !side_->moveToPlace()) {
    side_.reset();
    isWhole = openInPlace(name_) && fill(content);
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
  side_.reset();
  emptyFile(name_.c_str());
  name_.clear();
  openFile() = nullptr;
}

void OutputFile::abandon() noexcept {
  if (openFile() != nullptr) openFile()->leaveEmpty();
}

}  // namespace ostrel
