#include "logic/signal.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace ostrel {

Signal::Signal(TermTable& terms, const PlaName& declaration, bool node)
    : name(declaration.base),
      pinNumber(declaration.pin),
      isNode(node),
      registerType(declaration.registerType),
      polarity(declaration.polarity),
      terms_(&terms) {}

Equation& Signal::setSlot(Slot index, Equation equation) {
  slots_[index] = std::make_unique<Equation>(std::move(equation));
  return *slots_[index];
}

void Signal::swapSlots(Slot a, Slot b) {
  assert(a != b);
  std::swap(slots_[a], slots_[b]);
  if (slots_[a] && slots_[b]) {
    std::swap(slots_[a]->extension, slots_[b]->extension);
    std::swap(slots_[a]->xorRole, slots_[b]->xorRole);
  } else if (slots_[a] || slots_[b]) {
    (slots_[a] ? slots_[a] : slots_[b])->swapExtension();
  }
}

std::vector<Equation*> Signal::mainEquations() const {
  if (hasXorPair()) return {slot(SlotXorLeft), slot(SlotXorRight)};
  if (slot(SlotLogic) != nullptr) return {slot(SlotLogic)};
  return {};
}

bool Signal::hasNoLogic() const {
  return std::none_of(allSlots.begin(), allSlots.end(), [this](Slot index) {
    return slotHasLogic(index) &&
           !(index == SlotOutputEnable && slot(index)->isConstant(Constant::Zero));
  });
}

void Signal::followDeletion(const std::vector<Term>& renumbered, std::span<const int> newColumn) {
  for (const auto& equation : slots_) {
    if (equation) equation->renumber(renumbered);
  }
  std::size_t kept = 0;
  for (const std::size_t column : columns) {
    if (newColumn[column] >= 0) columns[kept++] = static_cast<std::size_t>(newColumn[column]);
  }
  columns.resize(kept);
  assert(std::ranges::is_sorted(columns));
  for (int* column : {&pinColumn, &feedbackColumn}) {
    if (*column >= 0) *column = newColumn[static_cast<std::size_t>(*column)];
  }
}

}  // namespace ostrel
