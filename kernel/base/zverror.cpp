// SPDX-License-Identifier: MIT
#include "base/zverror.h"

ZvError::ZvError(const std::string &what) : std::runtime_error(what) { }

ZvError::~ZvError() = default;

static std::string classFault(const ZvRxClass *actual, const ZvRxClass *wanted)
{
    return std::string("not that kind of class: ") + (actual ? actual->name() : "null") + " is no "
        + (wanted ? wanted->name() : "null");
}

ZvError_NotThatKindOfClass::ZvError_NotThatKindOfClass(const ZvRxClass *actual, const ZvRxClass *wanted)
    : ZvError(classFault(actual, wanted)), m_actual(actual), m_wanted(wanted)
{
}

ZvError_NotThatKindOfClass::~ZvError_NotThatKindOfClass() = default;
