#include "minimizer/cube_index.h"

#include <algorithm>
#include <bit>

namespace ostrel {

void CubeIndex::reset(std::size_t capacity) {
  const std::size_t slotCount = std::bit_ceil(std::max<std::size_t>(2 * capacity, 8));
  slots_.assign(slotCount, Slot{});
  next_.resize(capacity);
  filter_.assign(slotCount / 2, 0);
  slotShift_ = 64 - static_cast<unsigned>(std::countr_zero(slotCount));
  bitShift_ = slotShift_ - 5;
}

void CubeIndex::add(std::uint64_t key, std::size_t number) {
  const auto entry = static_cast<std::uint32_t>(number);
  Slot& slot = slots_[find(key)];
  next_[entry] = none;
  const std::uint64_t bit = key >> bitShift_;
  filter_[bit / 64] |= std::uint64_t{1} << (bit % 64);
  if (slot.last == none || slot.first == none) {
    slot = {key, entry, entry};
  } else {
    next_[slot.last] = entry;
    slot.last = entry;
  }
}

void CubeIndex::remove(std::uint64_t key, std::size_t number) {
  Slot& slot = slots_[find(key)];
  if (slot.first == number) {
    slot.first = next_[number];
    return;
  }
  std::uint32_t before = slot.first;
  while (next_[before] != number) before = next_[before];
  next_[before] = next_[number];
  if (slot.last == number) slot.last = before;
}

}  // namespace ostrel
