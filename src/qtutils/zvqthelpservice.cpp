// SPDX-License-Identifier: MIT
#include "zvqthelpservice.h"

ZvQtHelpService::~ZvQtHelpService() = default;
