/* A user's C99 program: a spectrum, a version, a report that is not shown. */
#include <stdio.h>
#include <vekm6.h>

int main(void) {
    float samps[10] = {1, 0, 0, 0, 0, 0, 0, 0};
    VekDCplx quotient = {0, 0};
    const VekDCplx a = {3, 4};
    const VekDCplx b = {0, 1};
    int k;
    vekSetErrMode(VEK_ErrModeSilent);
    veksRealFft(samps, 3, VEK_Forw);
    for (k = 0; k < 10; ++k)
        if (samps[k] != (k % 2 == 0 ? 1.0f : 0.0f)) return 1;
    quotient = vekzDiv(a, b);
    if (quotient.re != 4 || quotient.im != -3) return 2;
    if (vekGetErrStatus() != VEK_StsOk) return 3;
    veksRealFft(samps, 32, VEK_Forw);
    if (vekGetErrStatus() != VEK_StsBadArg) return 4;
    printf("%s %s\n", vekGetLibVersion()->name, vekGetLibVersion()->version);
    return 0;
}
