// SPDX-License-Identifier: MIT
#include "zvqtcontrolhelp.h"

CZvQtControlHelp::CZvQtControlHelp(bool followDrawing, ZvGlobalUIReactorHelp::SPickFirstInfo *info)
    : hooked(followDrawing), pickFirstInfo(info)
{
}

CZvQtControlHelp::~CZvQtControlHelp() = default;
