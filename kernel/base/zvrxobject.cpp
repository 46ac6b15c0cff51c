// SPDX-License-Identifier: MIT
#include "base/zvrxobject.h"

#include "base/zvlog.h"

#include <cstdlib>

ZvRxClass::ZvRxClass(const char *name, ZvRxClass *parent)
    : m_name(name), m_parent(parent), m_depth(parent ? parent->m_depth + 1 : 0)
{
    if (m_depth >= kMaxDepth)
        std::abort(); // a fault of the build: the table of ancestors has a fixed size
    if (parent) {
        for (int i = 0; i <= parent->m_depth; ++i)
            m_ancestors[i] = parent->m_ancestors[i];
    }
    m_ancestors[m_depth] = this;
}

void ZvRxClass::addX(const ZvRxClass *protocol, ZvRxObject *object)
{
    for (Protocol *p = m_protocols; p; p = p->next) {
        if (p->protocol == protocol) {
            p->object = object;
            return;
        }
    }
    // Descriptors live as long as the process, and so do their protocol entries.
    m_protocols = new Protocol {protocol, object, m_protocols};
}

ZvRxObject *ZvRxClass::getX(const ZvRxClass *protocol) const
{
    for (const ZvRxClass *cls = this; cls; cls = cls->m_parent) {
        for (const Protocol *p = cls->m_protocols; p; p = p->next) {
            if (p->protocol == protocol && p->object)
                return p->object;
        }
    }
    return nullptr;
}

ZvRxClass *ZvRxObject::desc()
{
    static ZvRxClass descriptor("ZvRxObject", nullptr);
    return &descriptor;
}

ZvRxObject::~ZvRxObject() = default;

ZvRxClass *ZvRxObject::isA() const
{
    return desc();
}

ZvRxObject *ZvRxObject::clone() const
{
    return nullptr;
}

bool ZvRxObject::copyFrom(const ZvRxObject *)
{
    return false;
}

bool ZvRxObject::isEqualTo(const ZvRxObject *other) const
{
    return this == other;
}

int ZvRxObject::comparedTo(const ZvRxObject *) const
{
    return 0;
}

ZvRxObject *ZvRxObject::subQueryX(const ZvRxClass *cls) const
{
    return isA()->getX(cls);
}

const ZvRxClass *zvrxIsAddRef()
{
    static const ZvRxClass marker("zvrxIsAddRef", nullptr);
    return &marker;
}

const ZvRxClass *zvrxIsRelease()
{
    static const ZvRxClass marker("zvrxIsRelease", nullptr);
    return &marker;
}

const ZvRxClass *zvrxIsNumRefs()
{
    static const ZvRxClass marker("zvrxIsNumRefs", nullptr);
    return &marker;
}

void zvrxAddRef(const ZvRxObject *object)
{
    if (object)
        object->subQueryX(zvrxIsAddRef());
}

void zvrxRelease(const ZvRxObject *object)
{
    if (object)
        object->subQueryX(zvrxIsRelease());
}

int zvrxNumRefs(const ZvRxObject *object)
{
    return object ? int(reinterpret_cast<std::intptr_t>(object->subQueryX(zvrxIsNumRefs()))) : 0;
}

void zvrxCheckRefCounter(std::int32_t count)
{
    if (!(count > 0))
        ZvAssert("(m_nRefCounter > 0)", __FILE__, __LINE__);
}
