// SPDX-License-Identifier: MIT
#include "zvupdateuievent.h"

ZvUpdateUiEvent::ZvUpdateUiEvent(const CZvGlobalUIReactorHelp &notice, QEvent::Type type)
    : QEvent(type),
      kind(notice.kind),
      name(notice.name),
      object(notice.object),
      database(notice.database),
      affectsSelection(notice.affectsSelection)
{
}

ZvUpdateUiEvent::~ZvUpdateUiEvent() = default;
