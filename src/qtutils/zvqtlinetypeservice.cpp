// SPDX-License-Identifier: MIT
#include "zvqtlinetypeservice.h"

ZvQtLinetypeService::~ZvQtLinetypeService() = default;
