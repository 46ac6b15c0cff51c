// SPDX-License-Identifier: MIT
#include "base/zvconfig.h"

ZvJsonPtr zv_runtime_settings()
{
    static const auto *settings = new ZvJsonPtr(ElementValue::createObject(IElementValueBase::kObject));
    return *settings;
}

ZvJsonPtr zv_runtime_config(const ZvUtf8String &path)
{
    ZvJsonPtr node;
    zv_runtime_settings()->GetDataJ(path.c_str(), node);
    return node;
}

void zvutEnumPaths(const ZvJsonPtr &node, ZvArray<ZvUtf8String> &paths)
{
    if (node.isNull() || node->isNullNode())
        return;
    if (!node->isArray()) {
        const ZvUtf8String path = node->asString();
        if (!path.isEmpty())
            paths.append(path);
        return;
    }
    for (int i = 0, n = node->elementCount(); i < n; ++i)
        zvutEnumPaths(node->element(i), paths);
}
