// SPDX-License-Identifier: MIT
#ifndef NOTICECASES_H
#define NOTICECASES_H

#include "zvglobaluireactorhelp.h"
#include "zvqtcontrolhelp.h"

#include "db/zvdbdatabase.h"

#include <QTest>

#include <initializer_list>

// Which notices make a control that is bound to the drawing read it again: one row for each notice.

/// A notice of an object. \a object is for the test to find the object by; empty for a notice without one.
inline void addObjectNotice(const char *row, const char *object, bool affects, bool passes)
{
    QTest::newRow(row) << quint64(kNoticeObject) << QString() << QString::fromUtf8(object) << affects << passes;
}

/// The columns, and the rows that all such controls have in common: variables are not heard of, layers and the
/// selection are, and so is all that may have changed anything.
inline void addNoticeRows(std::initializer_list<const char *> variables)
{
    QTest::addColumn<quint64>("kind");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("object");
    QTest::addColumn<bool>("affects");
    QTest::addColumn<bool>("passes");
    for (const char *name : variables) {
        QTest::addRow("variable %s", name) << quint64(kNoticeSysVar) << name << QString() << false << false;
        QTest::addRow("variable %s of the selection", name)
            << quint64(kNoticeSysVar) << name << QString() << true << false;
    }
    addObjectNotice("a layer", "layer", false, true);
    addObjectNotice("a line", "line", false, false);
    addObjectNotice("a line of the selection", "line", true, true);
    addObjectNotice("no object", "", false, false);
    const struct
    {
        const char *row;
        quint64 kind;
        const char *name;
    } others[] = {
        {"document current", kNoticeDocumentCurrent, ""},
        {"layout switched", kNoticeLayoutSwitched, ""},
        {"selection", kNoticePickFirst, ""},
        {"command ended", kNoticeCommandEnded, "ANY"},
        {"the host's first", kNoticeHostFirst, ""},
        {"the host's second", kNoticeHostSecond, ""},
    };
    for (const auto &other : others)
        QTest::newRow(other.row) << other.kind << other.name << QString() << false << true;
}

/// Tells \a control, and no other, of the notice of the current row. \a id is of the row's object.
inline void tellNotice(CZvQtControlHelp &control, ZvDbDatabase &drawing, ZvDbObjectId id)
{
    QFETCH(quint64, kind);
    QFETCH(QString, name);
    QFETCH(QString, object);
    QFETCH(bool, affects);
    const ZvDbObjectPointer<ZvDbObject> opened(id, ZvDb::kForRead);
    QVERIFY(opened);
    CZvGlobalUIReactorHelp notice;
    notice.kind = kind;
    notice.name = ZvString(name.toUtf8().constData());
    notice.object = object.isEmpty() ? nullptr : opened.get();
    notice.database = &drawing;
    notice.affectsSelection = affects;
    control.acceptUpdateUI(notice);
}

#endif
