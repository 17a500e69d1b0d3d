// Status, error modes and report handlers.
#ifndef VEKM6_FRAME_H
#define VEKM6_FRAME_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef VekStatus(VEKAPI* VekErrorHandler)(VekStatus status, const char* name, const char* message, const char* file,
                                            int line);

VekStatus VEKAPI vekError(VekStatus status, const char* name, const char* message, const char* file, int line);
const char* VEKAPI vekErrorStr(VekStatus status);
VekStatus VEKAPI vekGetErrStatus(void);
void VEKAPI vekSetErrStatus(VekStatus status);
int VEKAPI vekGetErrMode(void);
void VEKAPI vekSetErrMode(int mode);
VekErrorHandler VEKAPI vekRedirectError(VekErrorHandler handler);
VekStatus VEKAPI vekStdErrReport(VekStatus status, const char* name, const char* message, const char* file, int line);
VekStatus VEKAPI vekNulDevReport(VekStatus status, const char* name, const char* message, const char* file, int line);
VekStatus VEKAPI vekGuiBoxReport(VekStatus status, const char* name, const char* message, const char* file, int line);

#ifdef __cplusplus
}
#endif

#endif
