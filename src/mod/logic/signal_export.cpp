// What a Signal contributes to the written file. Names and rows are written in two walks, which
// agree on the numbers of the output columns because both follow exportedEquations.
#include "logic/input_column.h"
#include "logic/signal.h"
#include "run/options.h"

namespace ostrel {

/// The Equations with terms, in the order of their columns. A full pair hides SlotLogic.
std::vector<const Equation*> Signal::exportedEquations() const {
  std::vector<const Equation*> exported;
  if (slotHasLogic(SlotXorLeft) && slotHasLogic(SlotXorRight)) {
    exported = {slot(SlotXorLeft), slot(SlotXorRight)};
  } else if (slotHasLogic(SlotLogic)) {
    exported = {slot(SlotLogic)};
  }
  for (const Slot index : controlSlots) {
    if (slotHasLogic(index)) exported.push_back(slot(index));
  }
  return exported;
}

PlaName Signal::exportDeclaration() const {
  PlaName record;
  record.base = name;
  record.polarity = polarity;
  record.pin = pinNumber;
  record.registerType = registerType;
  return record;
}

PlaName Signal::fillColumnName(const Equation& equation, bool percentAllowed) const {
  PlaName record;
  record.base = name;
  record.extension = equation.extension == Extension::REG ? Extension::D : equation.extension;
  record.xorHalf = equation.xorRole;
  record.polarity = equation.polarity;
  record.pin = pinNumber;
  record.onTerms = equation.onCount();
  record.offTerms = equation.offCount();
  record.registerType = registerType;
  if (percentAllowed && record.polarity == Polarity::Inverted) {
    record.polarity = Polarity::None;
    record.percent = true;
  }
  return record;
}

void Signal::exportColumns(PlaFile& file, int& column) const {
  auto& records = file.table(NameKind::Output).records;
  for (const Equation* equation : exportedEquations()) {
    const bool percentAllowed = options().percent && equation == slot(SlotLogic);
    const auto index = static_cast<std::size_t>(column++);
    records[index] = fillColumnName(*equation, percentAllowed);
    (*file.phase)[index] = equation->phase;
  }
}

std::size_t Signal::exportedTermCount() const {
  std::size_t count = 0;
  for (const Equation* equation : exportedEquations()) {
    count += equation->onSet().size() + equation->offSet().size();
  }
  return count;
}

void Signal::exportRows(RowMerger& rows, int& column) const {
  for (const Equation* equation : exportedEquations()) {
    equation->writeRows(rows, static_cast<std::size_t>(column++));
  }
}

}  // namespace ostrel
