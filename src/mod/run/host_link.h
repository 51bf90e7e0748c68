// The link to a monitoring host.
#pragma once

namespace ostrel {

/// Registers the process with the host, tells it `exitCode`, and sends it the progress ticks.
void linkHost(int exitCode);

}  // namespace ostrel
