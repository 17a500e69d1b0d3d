// vekm6: signal processing on arrays. This header includes those of all families.
#ifndef VEKM6_H
#define VEKM6_H

#include "vekm6/types.h"

#include "vekm6/frame.h"
#include "vekm6/memory.h"

#include "vekm6/arith.h"
#include "vekm6/vec.h"

#include "vekm6/misc.h"
#include "vekm6/twd.h"

#include "vekm6/fft.h"

#endif
