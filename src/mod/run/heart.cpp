#include "run/heart.h"

namespace ostrel {
namespace {

HeartBeat& heartBeat() {
  static HeartBeat beat = nullptr;
  return beat;
}

std::string_view& step() {
  static std::string_view name;
  return name;
}

}  // namespace

void setCurrentStep(std::string_view name) {
  step() = name;
}

std::string_view currentStep() {
  return step();
}

void heartMsg() {
  if (heartBeat() != nullptr) heartBeat()();
}

void setHeartBeat(HeartBeat beat) {
  heartBeat() = beat;
}

}  // namespace ostrel
