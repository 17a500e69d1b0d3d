// The thread's status, its error mode, and the handler that gets the reports.
//
// Every operation that fails a check calls vekError. It stores the status and hands the report to the
// thread's handler, which may print it, ask the user, end the process or do nothing. All of this is per
// thread: a new thread starts with status 0, mode Leaf and the message box, whatever the thread that made it
// had set.
#ifndef VEKM6_FRAME_H
#define VEKM6_FRAME_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// A report handler.
//   Arguments: status of the report; name of the reporting operation; message, for a failed check the
//              condition itself ("n<=0"); file, the module that reports; line in it. Each of the three texts
//              may be null.
//   Returns:   what vekError is to return, and with it every operation that returns a status. The three
//              handlers below return the status they were given.
typedef VekStatus(VEKAPI* VekErrorHandler)(VekStatus status, const char* name, const char* message, const char* file,
                                           int line);

// The central report, open to callers for reports of their own.
//   Effect:    stores status as the thread's status unless it is VEK_StsBacktrace or VEK_StsAutotrace, which
//              only tell where an error passed through. With status 0 that is all; otherwise calls the
//              thread's handler with the five arguments unchanged.
//   Arguments: as VekErrorHandler.
//   Errors:    none.
//   Returns:   0 when status is 0, else the handler's result.
VekStatus VEKAPI vekError(VekStatus status, const char* name, const char* message, const char* file, int line);

// The text of a status.
//   Arguments: status, any value.
//   Errors:    none.
//   Returns:   a constant text, never null:
//                 0 "No Error"                          -5 "Bad argument"
//                -1 "Backtrace"                         -6 "Unsupported function"
//                -3 "Internal error (bad state)"        -7 "Iteration convergence failed"
//                -4 "Out of memory"                     -8 "Autotrace call"
//              and "Unknown error or status code" for every other value, -2 and -9 to -12 among them.
const char* VEKAPI vekErrorStr(VekStatus status);

// The thread's status. It is sticky: an error stays until the caller stores 0, and while it is negative the
// operations that compute do nothing.
//   Arguments: status, stored unchecked.
//   Errors:    none.
//   Returns:   Get: the stored status.
VekStatus VEKAPI vekGetErrStatus(void);
void VEKAPI vekSetErrStatus(VekStatus status);

// The thread's error mode, which the handlers below look at.
//   Arguments: mode, VEK_ErrModeLeaf (at first), VEK_ErrModeParent or VEK_ErrModeSilent; stored unchecked.
//   Errors:    none.
//   Returns:   Get: the stored mode.
int VEKAPI vekGetErrMode(void);
void VEKAPI vekSetErrMode(int mode);

// Installs the thread's report handler.
//   Arguments: handler; null stands for vekGuiBoxReport.
//   Errors:    none.
//   Returns:   the handler that was in force.
VekErrorHandler VEKAPI vekRedirectError(VekErrorHandler handler);

// Handler that prints to the standard error stream:
//     (empty line)
//     ZTL Library Error: <text of the status>
//     <tab>in function [<file>:<line>]:<name>(): <message>
// A backtrace is one line, "<tab>called from [<file>:<line>]:<name>"; an autotrace likewise, with
// "(<message>)" at its end. "[<file>:<line>]" is left out when file is null and line <= 0; a null name reads
// "<unknown>"; a null message is left out with its "(): ".
//   Modes:     Silent: prints nothing. Leaf: ends the process by exit(1) after a closing line.
//   Arguments: as VekErrorHandler.
//   Errors:    none.
//   Returns:   status.
VekStatus VEKAPI vekStdErrReport(VekStatus status, const char* name, const char* message, const char* file, int line);

// Handler that prints nothing.
//   Modes:     Leaf: ends the process by exit(1).
//   Arguments: as VekErrorHandler.
//   Errors:    none.
//   Returns:   status.
VekStatus VEKAPI vekNulDevReport(VekStatus status, const char* name, const char* message, const char* file, int line);

// Handler that asks the user; the one that every thread starts with. On Windows a system-modal message box;
// elsewhere the same caption and body on the standard error stream, and the first letter typed at the
// terminal as the button. The caption is "ZTL Library Error: " and the text of the thread's status, so that
// every box of a chain is headed by the error that began it. The body:
//     in function [<file>:<line>]:<name>():
//      <message>
//     (empty line)
//     ErrMode=VEK_ErrorModeLeaf
//     (empty line)
//     Terminate the application?
// A backtrace begins with "called from" instead; an autotrace too, with "<name>(<message>)" in the second
// line.
//   Modes:     Leaf: as shown; Yes ends the process, No goes on. Parent: "ErrMode=VEK_ErrorModeParent" and
//              "Continue?"; OK goes on, Cancel ends the process. Silent: shows nothing. Without a terminal
//              the answer is Yes in mode Leaf and OK in mode Parent.
//   Arguments: as VekErrorHandler.
//   Errors:    none.
//   Returns:   status.
VekStatus VEKAPI vekGuiBoxReport(VekStatus status, const char* name, const char* message, const char* file, int line);

VEK_DECLARATIONS_END

#endif
