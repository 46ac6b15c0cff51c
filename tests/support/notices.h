// SPDX-License-Identifier: MIT
#ifndef NOTICES_H
#define NOTICES_H

#include "base/zverror.h"
#include "base/zvlog.h"
#include "zvglobaluireactorhelp.h"
#include "zvqtcontrolhelp.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbdictionary.h"

#include <QComboBox>
#include <QEvent>
#include <QStringList>

#include <memory>

// Notices handed to a drop-down directly, as hosts do too, and what comes of them.

inline CZvGlobalUIReactorHelp noticeOf(std::uint64_t kind, const wchar_t *name = L"")
{
    CZvGlobalUIReactorHelp notice;
    notice.kind = kind;
    notice.name = name;
    return notice;
}

/// Shows no item, and tells nobody.
inline void blankQuietly(QComboBox &combo)
{
    combo.blockSignals(true);
    combo.setCurrentIndex(-1);
    combo.blockSignals(false);
}

/// Whether a control that shows nothing shows something after the notice. It must have been on the bus at a delivery:
/// its summary says what to show.
inline bool isFollowed(QComboBox &combo, const CZvGlobalUIReactorHelp &notice)
{
    blankQuietly(combo);
    qobject_cast<CZvQtControlHelp *>(&combo)->acceptUpdateUI(notice);
    return combo.currentIndex() >= 0;
}

/// The same of a notice about an object of a drawing.
inline bool isFollowedOf(QComboBox &combo, const ZvDbObject *object, const ZvDbDatabase &drawing, bool affectsSelection)
{
    CZvGlobalUIReactorHelp notice = noticeOf(kNoticeObject);
    notice.object = object;
    notice.database = &drawing;
    notice.affectsSelection = affectsSelection;
    return isFollowed(combo, notice);
}

/// An object that stands for all of its class, of no drawing.
template <class T> bool isFollowedOfClass(QComboBox &combo, const ZvDbDatabase &drawing, bool affectsSelection)
{
    const T object{};
    return isFollowedOf(combo, &object, drawing, affectsSelection);
}

/// The dictionary of a drawing, made where it is missing.
template <ZvDbObjectId (ZvDbDatabase::*dictionaryId)(bool) const>
bool isFollowedOfDictionary(QComboBox &combo, const ZvDbDatabase &drawing, bool affectsSelection)
{
    const ZvDbObjectPointer<ZvDbDictionary> dictionary((drawing.*dictionaryId)(true), ZvDb::kForRead);
    return dictionary && isFollowedOf(combo, dictionary.get(), drawing, affectsSelection);
}

inline bool isFollowedOfNothing(QComboBox &combo, const ZvDbDatabase &drawing, bool affectsSelection)
{
    return isFollowedOf(combo, nullptr, drawing, affectsSelection);
}

/// Which notices of objects a control follows: a row of a test.
struct ObjectRow
{
    const char *name;
    std::unique_ptr<QComboBox> (*make)();
    bool (*isFollowed)(QComboBox &combo, const ZvDbDatabase &drawing, bool affectsSelection);
    bool whenAffecting;
    bool otherwise;
};

/// A control with it fails by an error of the kernel while it shows something. (What is thrown out of the middle of a
/// change to the list would leave memory of Qt's behind.)
class FailingControl : public QObject
{
public:
    explicit FailingControl(QComboBox &combo)
    {
        combo.setEnabled(false);
        combo.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            throw ZvError("it cannot be shown");
        return QObject::eventFilter(watched, event);
    }
};

/// Collects the kernel's assertions for the life of the object, each as "text, unit, line".
class Assertions
{
public:
    Assertions()
    {
        list().clear();
        m_before = zvSetAssertHandler([](const char *text, const char *unit, int line) {
            list() << QStringLiteral("%1, %2, %3").arg(QLatin1String(text), QLatin1String(unit)).arg(line);
        });
    }
    ~Assertions() { zvSetAssertHandler(m_before); }
    Assertions(const Assertions &) = delete;
    Assertions &operator=(const Assertions &) = delete;

    static QStringList &list()
    {
        static QStringList assertions;
        return assertions;
    }

private:
    ZvAssertHandler m_before;
};

#endif
