// SPDX-License-Identifier: MIT
#include "zvqtlinetypeservice.h"

ZVRX_DEFINE_MEMBERS(ZvQtLinetypeService, ZvRxObject)

ZvQtLinetypeService::~ZvQtLinetypeService() = default;
