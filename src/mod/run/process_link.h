// The process link of a monitoring host: three functions that a host provides at link time.
#pragma once

extern "C" {

/// Registers this process; called first and once. The value goes to WHProcSetExitCode.
int WHProcRegister();

/// Tells the host an exit code for the registered process.
int WHProcSetExitCode(int process, int exitCode);

/// One progress tick. Returns soon and can be called many times.
int WHOutputHeartMsg();
}
