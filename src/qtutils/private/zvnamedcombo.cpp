// SPDX-License-Identifier: MIT
#include "private/zvnamedcombo.h"

#include "private/zvresbufptr.h"
#include "private/zvtranslation.h"

#include "db/zvdbdatabase.h"

#include <QAbstractItemModel>
#include <QPointer>

namespace {

/// Child of a list: what its rows come from. Whoever changes them takes it away.
class FilledFrom : public QObject
{
public:
    FilledFrom(QComboBox &combo, const ZvListSource &source) : QObject(&combo), m_model(combo.model()), m_source(source)
    {
        for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
            connect(m_model, signal, this, &FilledFrom::forget);
        connect(m_model, &QAbstractItemModel::dataChanged, this, &FilledFrom::forget);
        connect(m_model, &QAbstractItemModel::modelReset, this, &FilledFrom::forget);
        connect(m_model, &QAbstractItemModel::rowsMoved, this, &FilledFrom::forget);
        connect(m_model, &QAbstractItemModel::layoutChanged, this, &FilledFrom::forget);
    }
    static FilledFrom *of(const QComboBox &combo)
    {
        for (QObject *child : combo.children()) {
            if (auto *found = dynamic_cast<FilledFrom *>(child))
                return found;
        }
        return nullptr;
    }
    bool is(const QComboBox &combo, const ZvListSource &source) const
    {
        return m_model && m_model == combo.model() && !m_source.table.isNull() && m_source.table == source.table
            && m_source.stamp == source.stamp && m_source.variant == source.variant;
    }

private:
    void forget() { m_source = ZvListSource(); }

    const QPointer<QAbstractItemModel> m_model;
    ZvListSource m_source;
};

} // namespace

ZvListSource zvListSource(ZvDbObjectId (*idOf)(const ZvDbDatabase &drawing))
{
    const ZvDbDatabase *drawing = curDatabase();
    // Some lists are those of the document.
    if (!drawing || drawing != zvCurrentDocumentDatabase() || drawing->openObjectCount() > 0)
        return ZvListSource();
    const ZvDbObjectId table = idOf(*drawing);
    return table.isNull() ? ZvListSource() : ZvListSource{table, drawing->changeStamp(table)};
}

bool zvIsFilledFrom(const QComboBox &combo, const ZvListSource &source)
{
    const FilledFrom *filled = FilledFrom::of(combo);
    return filled && filled->is(combo, source);
}

void zvNoteFilledFrom(QComboBox &combo, const ZvListSource &source)
{
    delete FilledFrom::of(combo);
    if (!source.table.isNull())
        new FilledFrom(combo, source);
}

void zvAppendNames(QComboBox &combo, CZvQtControlHelp &control, const ZvArray<ZvString> &names)
{
    const ZvHookedCleared filling(control);
    std::vector<ZvRow> rows;
    rows.reserve(std::size_t(names.length()));
    for (const ZvString &name : names)
        rows.push_back({QIcon(), zvToQString(name), QVariant()});
    zvAppendRows(combo, std::move(rows));
}

void zvAppendStyles(QComboBox &combo, CZvQtControlHelp &control,
                    const ZvArray<ZevaUISetting::ZvsiStyleInfoItem> &styles)
{
    ZvArray<ZvString> names;
    for (const ZevaUISetting::ZvsiStyleInfoItem &style : styles)
        names.append(style.name);
    zvAppendNames(combo, control, names);
}

void zvTranslateCellStyles(QComboBox &combo)
{
    zvTranslateRows(&combo, "ZevaUISetting", {"标题", "表头", "数据"});
}

ZvDbObjectId zvStyleVariable(const wchar_t *variable, const ZvDbDatabase &drawing)
{
    const ZvResBufPtr value(zvHostService()->readVariable(variable, &drawing));
    return value ? value->getObjectId(&drawing) : ZvDbObjectId();
}
