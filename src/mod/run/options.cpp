#include "run/options.h"

#include <utility>

namespace ostrel {
namespace {

Options& current() {
  static Options values;
  return values;
}

}  // namespace

const Options& options() {
  return current();
}

void setOptions(Options values) {
  current() = std::move(values);
}

}  // namespace ostrel
