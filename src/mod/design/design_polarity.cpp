// In which form the design leaves: the set that each Equation keeps, the order of exclusive-or
// operands, and the extensions with which driven pins and nodes are read.
#include "design/design.h"
#include "run/options.h"

namespace ostrel {

void Design::choosePolarity() {
  for (Signal* signal : logicList_) signal->choosePolarity();
  plaType_ = PlaType::f;
  logicListIsCurrent_ = false;
}

void Design::normalizePolarity() {
  for (Signal* signal : logicList_) signal->normalizePolarity();
}

void Design::swapXorPairs() {
  for (Signal* signal : logicList_) {
    if (signal->slot(SlotXorLeft) != nullptr) signal->swapSlots(SlotXorLeft, SlotXorRight);
  }
}

void Design::assignFeedbackExtensions() {
  const bool internalFeedback = options().internalFeedback;
  for (InputColumn& column : columns_) {
    const Signal& signal = *column.signal;
    if (column.extension != Extension::None || !signal.isOutputPin()) continue;
    const Equation* enable = signal.slot(SlotOutputEnable);
    const bool isAlwaysOn = enable == nullptr || enable->isConstant(Constant::One);
    if (!internalFeedback || !isAlwaysOn) {
      column.extension = Extension::PIN;
    } else if (signal.isCombinatorial()) {
      column.extension = Extension::D;
    }
  }
}

void Design::absorbInversions() {
  if (!options().ffBeforeInverter) return;
  ColumnSet inverted;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    const InputColumn& column = columns_[c];
    const bool readsInside = column.signal->isNode || column.extension == Extension::D ||
                             column.extension == Extension::Q || column.extension == Extension::FB;
    const Equation* logic = column.signal->slot(SlotLogic);
    if (readsInside && logic != nullptr && logic->polarity == Polarity::Inverted) {
      inverted.insert(c);
    }
  }
  terms_.invertColumns(inverted);
  for (const Signal* signal : logicList_) {
    Equation* logic = signal->slot(SlotLogic);
    if (signal->isNode && logic != nullptr && logic->polarity == Polarity::Inverted) {
      logic->togglePolarity();
    }
  }
}

}  // namespace ostrel
