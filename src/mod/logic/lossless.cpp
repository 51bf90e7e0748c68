#include "logic/lossless.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "logic/columns.h"
#include "logic/export.h"
#include "logic/kept_sets.h"
#include "logic/polarity.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

bool isInverted(const Signal& signal) {
  bool inverted = false;
  for (const Equation* equation : signal.mainEquations()) {
    inverted ^= equation->polarity == Polarity::Inverted;
  }
  return inverted;
}

/// A half alone is the plain function, unless there is one.
void completePair(Signal& signal) {
  const bool hasLeft = signal.slot(SlotXorLeft) != nullptr;
  if (hasLeft == (signal.slot(SlotXorRight) != nullptr)) return;
  const Slot half = hasLeft ? SlotXorLeft : SlotXorRight;
  Equation plain = *signal.slot(half);
  signal.deleteSlot(half);
  if (signal.slot(SlotLogic) != nullptr) return;
  plain.xorRole = XorHalf::None;
  if (plain.extension == Extension::X1 || plain.extension == Extension::X2) {
    plain.extension = Extension::None;
  }
  signal.setSlot(SlotLogic, std::move(plain));
  note({signal.name, " has one XOR half, which is its plain function"});
}

/// The extension that says a type at the main function.
Extension mainExtension(RegisterType type) {
  switch (type) {
    case RegisterType::None:
    case RegisterType::COM:
      return Extension::COM;
    case RegisterType::REG_T:
      return Extension::T;
    case RegisterType::REG_L:
      return Extension::L;
    default:
      return Extension::D;
  }
}

/// The type that the written columns are read back with; none if they can't be read.
std::optional<RegisterType> typeReadBack(const Signal& signal) {
  std::optional<RegisterType> type = RegisterType::None;
  for (const Equation* equation : exportedEquations(signal)) {
    const Extension extension = writtenExtension(*equation);
    const bool isPlainHalf = equation->xorRole != XorHalf::None && extension == Extension::None;
    if (type) type = typeOfColumn(isPlainHalf ? Extension::X1 : extension, *type);
  }
  return type;
}

bool isReadBack(const Signal& signal) {
  const auto plain = [](RegisterType type) {
    return type == RegisterType::None ? RegisterType::COM : type;
  };
  const std::optional<RegisterType> type = typeReadBack(signal);
  return type && plain(*type) == plain(signal.registerType);
}

/// An SR register can only have its data as a pair: the function XOR 0.
void makePair(Signal& signal) {
  Equation left = *signal.slot(SlotLogic);
  Equation& right = signal.makeEquation(SlotXorRight);
  left.extension = right.extension = Extension::None;
  left.xorRole = XorHalf::Left;
  right.xorRole = XorHalf::Right;
  right.makeConstant(false);
  signal.setSlot(SlotXorLeft, std::move(left));
  signal.deleteSlot(SlotLogic);
}

bool hasMain(const Signal& signal) {
  return signal.slotHasLogic(SlotLogic) || signal.pairHasLogic();
}

/// Finds columns that say the type: with an extension of the main function, or with that function
/// behind the controls.
Status settleType(Signal& signal) {
  if (isReadBack(signal) || (!hasMain(signal) && typeReadBack(signal) == RegisterType::None)) {
    return Status::Ok;
  }
  if (!hasMain(signal)) {
    signal.deleteSlot(SlotXorLeft);
    signal.deleteSlot(SlotXorRight);
    Equation& any = signal.makeEquation(SlotLogic);  // any function would do
    any.makeConstant(false);
    if (signal.startsInverted) any.polarity = Polarity::Inverted;
  }
  if (signal.registerType == RegisterType::REG_SR && signal.slotHasLogic(SlotLogic)) {
    makePair(signal);
  }
  for (Equation* equation : signal.mainEquations()) {
    if (isReadBack(signal)) break;
    equation->extension = mainExtension(signal.registerType);
  }
  if (!isReadBack(signal)) signal.controlsFirst = true;
  if (isReadBack(signal)) {
    note({signal.name, " has columns that say its register type"});
    return Status::Ok;
  }
  error({signal.name, " has a register type that no columns say"});
  return Status::Failed;
}

/// Both words of a pair of synonyms mean the reset, so a set needs one of its own.
void nameInitializers(Signal& signal) {
  Equation* set = signal.slot(SlotSet);
  if (set == nullptr) return;
  if (set->extension == Extension::ASYNC) set->extension = Extension::AP;
  if (set->extension == Extension::SYNC) set->extension = Extension::SP;
}

}  // namespace

void complete(Signal& signal, PlaType type) {
  for (const Slot slot : allSlots) {
    Equation* equation = signal.slot(slot);
    if (type != PlaType::fd || equation == nullptr || !equation->isEmpty()) continue;
    equation->makeConstant(false);
    note({signal.name, extensionText(equation->extension), " is empty and written as 0"});
  }
  completePair(signal);
  for (const Slot slot : allSlots) {
    Equation* equation = signal.slot(slot);
    if (equation == nullptr) continue;
    equation->isFree =
        equation->mayBe(Constant::Zero, type) && equation->mayBe(Constant::One, type);
  }
  const Equation* enable = signal.slot(SlotOutputEnable);
  signal.enableMayGo = enable != nullptr && enable->mayBe(Constant::One, type);
  if (!mayInvert(signal)) note({signal.name, " keeps its sense, which set and reset depend on"});
  signal.startsInverted = isInverted(signal);
}

Status settle(Signal& signal, bool isRead) {
  const bool hasTurned = hasMain(signal) && isInverted(signal) != signal.startsInverted;
  const Equation* logic = signal.slot(SlotLogic);
  const bool isEitherSense = !isRead && signal.isNode && logic != nullptr && logic->isFree;
  const bool hasInit = options().ffBeforeInverter && isInitialized(signal) && !isEitherSense;
  if (hasInit && hasTurned != signal.initSwapped) {
    if (!options().swapSetReset) {
      signal.keepsSense = true;  // as it had to from the start
      error({signal.name, " is inverted, and its set and reset may not follow"});
      return Status::Failed;
    }
    exchangeSetAndReset(signal);
  }
  nameInitializers(signal);
  return settleType(signal);
}

}  // namespace ostrel
