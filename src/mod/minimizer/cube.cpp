#include "minimizer/cube.h"

#include <utility>

namespace ostrel {

Cube::Cube(std::string_view text) {
  for (std::size_t column = 0; column < text.size(); ++column) {
    if (text[column] == '0' || text[column] == '1') set(column, text[column]);
  }
}

Cube::Cube(const Cube& other) : first_(other.first_), blockCount_(other.blockCount_) {
  if (blockCount_ > 1) {
    rest_ = std::make_unique<Block[]>(blockCount_ - 1);
    std::copy_n(other.rest_.get(), blockCount_ - 1, rest_.get());
  }
}

Cube& Cube::operator=(const Cube& other) {
  if (this == &other) return *this;
  if (blockCount_ != other.blockCount_) return *this = Cube(other);
  first_ = other.first_;
  if (blockCount_ > 1) std::copy_n(other.rest_.get(), blockCount_ - 1, rest_.get());
  return *this;
}

// A cube that was moved from is the universal cube again, so that its block count stays true.
Cube::Cube(Cube&& other) noexcept
    : first_(std::exchange(other.first_, Block{})),
      blockCount_(std::exchange(other.blockCount_, 1)),
      rest_(std::move(other.rest_)) {}

Cube& Cube::operator=(Cube&& other) noexcept {
  first_ = std::exchange(other.first_, Block{});
  blockCount_ = std::exchange(other.blockCount_, 1);
  rest_ = std::move(other.rest_);
  return *this;
}

std::string Cube::text(std::size_t width) const {
  std::string result(width, '-');
  forEachLiteral([&](std::size_t column, char literal) {
    if (column < width) result[column] = literal;
  });
  return result;
}

void Cube::set(std::size_t column, char literal) {
  const bool isLiteral = literal == '0' || literal == '1';
  if (column / 64 >= blockCount_) {
    if (!isLiteral) return;
    grow(column / 64 + 1);
  }
  const std::uint64_t bit = std::uint64_t{1} << (column % 64);
  Block& b = mutableBlock(column / 64);
  b.care = isLiteral ? b.care | bit : b.care & ~bit;
  b.value = literal == '1' ? b.value | bit : b.value & ~bit;
}

void Cube::setBlock(std::size_t i, Block b) {
  if (i >= blockCount_) {
    if (b.care == 0) return;
    grow(i + 1);
  }
  mutableBlock(i) = {b.care, b.value & b.care};
}

void Cube::grow(std::size_t blockCount) {
  auto wider = std::make_unique<Block[]>(blockCount - 1);
  if (blockCount_ > 1) std::copy_n(rest_.get(), blockCount_ - 1, wider.get());
  rest_ = std::move(wider);
  blockCount_ = blockCount;
}

}  // namespace ostrel
