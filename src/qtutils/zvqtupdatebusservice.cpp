// SPDX-License-Identifier: MIT
#include "zvqtupdatebusservice.h"

ZvQtUpdateBusService::~ZvQtUpdateBusService() = default;
