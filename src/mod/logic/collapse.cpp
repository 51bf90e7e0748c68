#include "logic/collapse.h"

#include <utility>

#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// Two inversions cancel, and Positive says that they did.
void invertBy(Polarity others, Polarity& own) {
  if (others != Polarity::Inverted) return;
  own = own == Polarity::Inverted ? Polarity::Positive : Polarity::Inverted;
}

}  // namespace

std::optional<std::size_t> singleLiteral(const Signal& signal, std::span<const InputColumn> columns,
                                         const TermTable& terms) {
  const Equation* logic = signal.slot(SlotLogic);
  if (logic == nullptr) return std::nullopt;
  const bool isOn = !logic->onSet().empty();
  const TermChain& chain = isOn ? logic->onSet() : logic->offSet();
  if (chain.size() != 1) return std::nullopt;
  const Cube& cube = terms.cube(chain.front());
  if (cube.literalCount() != 1) return std::nullopt;

  std::size_t column = 0;
  bool inverted = !isOn;
  cube.forEachLiteral([&](std::size_t c, char literal) {
    column = c;
    if (literal == '0') inverted = !inverted;
  });
  const InputColumn& source = columns[column];
  if (source.extension == Extension::Q && source.signal->polarity == Polarity::Inverted) {
    inverted = !inverted;
  }
  if (inverted) return std::nullopt;
  return column;
}

int bestTermCount(const Signal& signal) {
  const auto count = [&signal](Slot index) {
    const Equation* equation = signal.slot(index);
    return equation == nullptr ? 0 : equation->termCount(SetSelector::Smaller);
  };
  const int pair = count(SlotXorLeft) + count(SlotXorRight);
  const bool hasOperand =
      signal.slot(SlotXorLeft) != nullptr || signal.slot(SlotXorRight) != nullptr;
  return hasOperand ? pair : count(SlotLogic);
}

void copyLogic(const Signal& source, Signal& reader) {
  const bool isMarked =
      source.polarity == Polarity::Inverted || source.columnPolarity == Polarity::Inverted;
  if (options().lossless && (isMarked || source.hasXorPair())) {
    note({reader.name, " takes the function of ", source.name, " over in its own sense"});
  }
  if (!options().lossless) {
    invertBy(source.polarity, reader.polarity);
    invertBy(source.columnPolarity, reader.columnPolarity);
  }

  const Equation* old = reader.slot(SlotLogic);
  const Extension oldExtension = old != nullptr ? old->extension : Extension::None;
  const Polarity oldPolarity = old != nullptr ? old->polarity : Polarity::None;
  const auto copy = [&](Slot index, XorHalf role) -> Equation* {
    reader.deleteSlot(index);
    if (source.slot(index) == nullptr) return nullptr;
    Equation& equation = reader.setSlot(index, *source.slot(index));
    equation.extension = oldExtension;
    equation.xorRole = role;
    equation.phase = '1';
    equation.isFree = false;  // the reader has the value that the source chooses
    return &equation;
  };
  Equation* logic = copy(SlotLogic, XorHalf::None);
  if (logic != nullptr && oldPolarity == Polarity::Inverted) logic->togglePolarity();
  for (Equation* operand : {copy(SlotXorLeft, XorHalf::Left), copy(SlotXorRight, XorHalf::Right)}) {
    if (operand == nullptr) continue;
    if (!options().lossless) operand->polarity = oldPolarity;
    // A half that is open everywhere would take the other one with it.
    if (options().lossless && operand->isEmpty()) operand->makeConstant(false);
  }
  // The inversion stands behind the gate: on one half it is kept, on both it cancels.
  Equation* left = reader.slot(SlotXorLeft);
  if (options().lossless && left != nullptr && oldPolarity == Polarity::Inverted) {
    left->togglePolarity();
  }
}

}  // namespace ostrel
