// With which extensions, and in which sense, driven pins and nodes are read.
#include "design/passes.h"
#include "run/options.h"

namespace ostrel {

void assignFeedbackExtensions(Design& design) {
  const bool internalFeedback = options().internalFeedback;
  for (InputColumn& column : design.columns()) {
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

void absorbInversions(Design& design) {
  if (!options().ffBeforeInverter) return;
  const auto isInverted = [](const Signal& signal) {
    const Equation* logic = signal.slot(SlotLogic);
    return logic != nullptr && logic->polarity == Polarity::Inverted;
  };
  ColumnSet inverted;
  for (std::size_t c = 0; c < design.columns().size(); ++c) {
    const InputColumn& column = design.columns()[c];
    const bool readsInside = column.signal->isNode || column.extension == Extension::D ||
                             column.extension == Extension::Q || column.extension == Extension::FB;
    if (readsInside && isInverted(*column.signal)) inverted.insert(c);
  }
  design.terms().invertColumns(inverted);
  for (const Signal* signal : design.logic()) {
    if (signal->isNode && isInverted(*signal)) signal->slot(SlotLogic)->togglePolarity();
  }
}

}  // namespace ostrel
