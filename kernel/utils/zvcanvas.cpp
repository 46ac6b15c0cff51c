// SPDX-License-Identifier: MIT
#include "utils/zvcanvas.h"

ZVRX_DEFINE_MEMBERS(HdiClipRgn, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvsiCanvas, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvsiRenderObject, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvsiReferenceDevice, ZvRxObject)
