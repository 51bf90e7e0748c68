#include "logic/export.h"

#include "run/options.h"

namespace ostrel {

std::vector<const Equation*> exportedEquations(const Signal& signal) {
  std::vector<const Equation*> exported;
  std::vector<const Equation*> controls;
  if (signal.pairHasLogic()) {
    exported = {signal.slot(SlotXorLeft), signal.slot(SlotXorRight)};
  } else if (signal.slotHasLogic(SlotLogic)) {
    exported = {signal.slot(SlotLogic)};
  }
  for (const Slot index : controlSlots) {
    if (signal.slotHasLogic(index)) controls.push_back(signal.slot(index));
  }
  const auto place = signal.controlsFirst ? exported.begin() : exported.end();
  exported.insert(place, controls.begin(), controls.end());
  return exported;
}

PlaName declarationName(const Signal& signal) {
  PlaName record;
  record.base = signal.name;
  record.polarity = signal.polarity;
  record.pin = signal.pinNumber;
  record.registerType = signal.registerType;
  return record;
}

Extension writtenExtension(const Equation& equation) {
  return equation.extension == Extension::REG ? Extension::D : equation.extension;
}

PlaName outputName(const Signal& signal, const Equation& equation) {
  PlaName record = declarationName(signal);
  record.extension = writtenExtension(equation);
  record.xorHalf = equation.xorRole;
  record.polarity = equation.polarity;
  const bool percentAllowed = options().percent && &equation == signal.slot(SlotLogic);
  if (percentAllowed && record.polarity == Polarity::Inverted) {
    record.polarity = Polarity::None;
    record.percent = true;
  }
  return record;
}

PlaName inputName(const InputColumn& column) {
  PlaName record;
  record.base = column.signal->name;
  record.extension = column.extension;
  return record;
}

}  // namespace ostrel
