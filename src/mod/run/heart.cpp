#include "run/heart.h"

namespace ostrel {
namespace {

HeartBeat& heartBeat() {
  static HeartBeat beat = nullptr;
  return beat;
}

}  // namespace

void heartMsg() {
  if (heartBeat() != nullptr) heartBeat()();
}

void setHeartBeat(HeartBeat beat) {
  heartBeat() = beat;
}

}  // namespace ostrel
