// In which form the design leaves: the set that each Equation keeps.
#include "logic/polarity.h"

#include "design/passes.h"

namespace ostrel {

void choosePolarity(Design& design) {
  for (Signal* signal : design.logic()) choosePolarity(*signal);
  design.type = PlaType::f;
  design.noteEmptiedLogic();
}

void normalizePolarity(Design& design) {
  for (Signal* signal : design.logic()) normalizePolarity(*signal);
}

}  // namespace ostrel
