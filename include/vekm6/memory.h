// Aligned memory and the version record.
#ifndef VEKM6_MEMORY_H
#define VEKM6_MEMORY_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VekLibVersion {
    int32_t major;
    int32_t minor;
    int32_t build;
    const char* name;
    const char* version;
    const char* internalVersion;
    const char* buildDate;
    const char* kind;
} VekLibVersion;

void* VEKAPI vekMalloc(uint32_t count);
float* VEKAPI veksMalloc(uint32_t count);
double* VEKAPI vekdMalloc(uint32_t count);
VekCplx* VEKAPI vekcMalloc(uint32_t count);
VekDCplx* VEKAPI vekzMalloc(uint32_t count);
int16_t* VEKAPI vekwMalloc(uint32_t count);
VekWCplx* VEKAPI vekvMalloc(uint32_t count);
int32_t* VEKAPI vekiMalloc(uint32_t count);
void* VEKAPI vekjMalloc(uint32_t count);
void VEKAPI vekFree(void* block);
const VekLibVersion* VEKAPI vekGetLibVersion(void);

#ifdef __cplusplus
}
#endif

#endif
