// SPDX-License-Identifier: MIT
#include "zvqtplotservice.h"

ZVRX_DEFINE_MEMBERS(ZvQtPlotService, ZvRxObject)

ZvQtPlotService::~ZvQtPlotService() = default;
