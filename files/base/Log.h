#pragma once

#include <ctime>
#include <string>

/// Receives the finished, terminated text of a print.
using LogListener = void (*)(const char* text);

/// A trace in printf format, cut to 2048 bytes. Goes to the listener and to the console, if there are any.
void DebugPrint(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// As DebugPrint, with line ends made CR LF and the text kept in the log file too. The first call opens the
/// log. Line feeds at the very beginning stay bare.
void CrashLog(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Opens, and empties, "crash.log" in the working directory. With a file "debug.fnt" there it is a dated
/// log in the folder "logs" instead. `useConsole` makes standard output the console of both prints.
void OpenCrashLog(bool useConsole);

/// Null for none. The listener is called on the thread of the print.
void SetLogListener(LogListener listener);

/// "logs/crash_<date>_<time>.log" for a local time: hours on the 12-hour clock, no time marker.
std::string DatedLogName(const std::tm& local);
