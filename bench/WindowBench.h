#pragma once
// The entry of a benchmark program that opens windows.
#include <QString>

#include <functional>

class MDIForm1;

namespace bench {

// Starts the program in a folder (the delivered files installed if missing) straight to
// its frame: the tips and the welcome window are switched off, as they wait for a user.
MDIForm1* StartProgram(const QString& folder);
// Closes every window and both databases.
void CloseProgram();

// Runs the registered benchmarks offscreen under the program's application object;
// `beforeExit` lets go of what must go before the application does.
int RunWindowBenchmarks(int argc, char** argv, const std::function<void()>& beforeExit = {});

} // namespace bench
