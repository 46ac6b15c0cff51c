// SPDX-License-Identifier: MIT
#ifndef ZVNAMEDCOMBO_H
#define ZVNAMEDCOMBO_H

#include "private/zvaccessibility.h"
#include "private/zvboundcontrol.h"

#include "base/zvarray.h"
#include "db/zvdbobject.h"

// What the drop-downs of styles and named objects share beyond what all bound controls do.

/// A list of names: picks come to curIndexChanged().
template <class Combo> void zvSetUpList(Combo &combo)
{
    if (!dynamic_cast<ZvRowModel *>(combo.model()))
        combo.setModel(new ZvRowModel(&combo));
    QObject::connect(&combo, qOverload<int>(&QComboBox::currentIndexChanged), &combo, &Combo::curIndexChanged);
    combo.setInsertPolicy(QComboBox::InsertAfterCurrent);
    zvNameForReaders(&combo);
}

/// A row for each name, with hooked cleared.
void zvAppendNames(QComboBox &combo, CZvQtControlHelp &control, const ZvArray<ZvString> &names);
/// A row for each style, with hooked cleared.
void zvAppendStyles(QComboBox &combo, CZvQtControlHelp &control,
                    const ZvArray<ZevaUISetting::ZvsiStyleInfoItem> &styles);

/// The cell styles that every drawing has follow the language.
void zvTranslateCellStyles(QComboBox &combo);

/// What a list of names is read from.
struct ZvListSource
{
    ZvDbObjectId table; ///< Or dictionary; null where the list cannot be told to be unchanged.
    std::uint64_t stamp = 0;
    int variant = 0; ///< What else decides on the rows, in the list's own numbers.
};

/// The table or dictionary that \a idOf names in the current drawing. While anything is open the source is none: what
/// is open for write is missing in a list.
ZvListSource zvListSource(ZvDbObjectId (*idOf)(const ZvDbDatabase &drawing));

/// Whether the rows are those that the list was filled with from \a source, and nobody has changed them since.
bool zvIsFilledFrom(const QComboBox &combo, const ZvListSource &source);
/// Notes that the list has just been filled from \a source.
void zvNoteFilledFrom(QComboBox &combo, const ZvListSource &source);

/// What comes before QComboBox::showPopup() of a bound list of names: it is filled anew, unless that would make the
/// same rows. A drawing has thousands of styles at times, and its lists are opened far more often than they change.
/// \a sourceOf reads the drawing, and is not asked for a list that is not bound.
template <class SourceOf, class Fill>
void zvRefillNamesForOpening(QComboBox &combo, const CZvQtControlHelp &control, SourceOf sourceOf, Fill fill)
{
    if (!control.hooked)
        return;
    const ZvListSource source = sourceOf();
    // A blank list is filled for what its filling shows.
    const bool isFilled = zvIsFilledFrom(combo, source) && !(combo.currentText().isEmpty() && !zvIsMixed(control));
    zvRefillKeepingText(combo, control, [&] {
        if (!isFilled)
            fill();
    });
    if (!isFilled)
        zvNoteFilledFrom(combo, source);
}

/// Id that a system variable of the drawing holds, null where it cannot be read.
ZvDbObjectId zvStyleVariable(const wchar_t *variable, const ZvDbDatabase &drawing);

/// Shows an object by its name, in a row of its own where none has that name. Nothing for an id that is not valid, nor
/// in an empty list.
template <class Object> void zvShowObject(QComboBox &combo, CZvQtControlHelp &control, const ZvDbObjectId &id)
{
    if (!id.isValid() || combo.count() == 0)
        return;
    ZvString name;
    if (const ZvDbObjectPointer<Object> object{id, ZvDb::kForRead})
        name = object->name();
    zvShowName(combo, control, name.isEmpty() ? QString() : zvToQString(name), ZvNameMatch::kIgnoreCase);
}

/// Passes to \a show what the summary says or, with nothing selected, what \a current tells of the drawing. Without
/// either the control is blank.
template <class T, class Current, class Show>
void zvFollowValue(QComboBox &combo, const ZvGlobalUIReactorHelp::SPropertyInfo<T> &info, Current current, Show show)
{
    const ZvShown shown = zvWhatToShow(info);
    if (zvIsBlank(shown))
        zvShowBlank(combo, shown);
    else
        show(shown == ZvShown::kCurrentValue ? T(current(*zvCurrentDocumentDatabase())) : info.value);
}

/// The same for an object that is shown by its name.
template <class Object, class Current>
void zvFollowObject(QComboBox &combo, CZvQtControlHelp &control,
                    const ZvGlobalUIReactorHelp::SPropertyInfo<ZvDbObjectId> &info, Current current)
{
    zvFollowValue(combo, info, current, [&](const ZvDbObjectId &id) { zvShowObject<Object>(combo, control, id); });
}

/// What picks in a list do that neither follows nor writes the drawing: the keyboard goes back to it.
template <class Signal> void zvTellPick(QComboBox &combo, Signal tell)
{
    ZevaUISetting::restoreFocus2MainView();
    {
        // Hosts that guard the list by themselves find their guard ended, as after a pick in the bound ones.
        const ZvQtBlockSignalUtil block(&combo);
    }
    tell(combo.currentText());
}

/// The same, with the list's own signals still blocked: nobody hears the signal. Hosts follow currentIndexChanged(),
/// and would act twice on a pick if they heard both.
template <class Signal> void zvTellPickUnheard(QComboBox &combo, Signal tell)
{
    ZevaUISetting::restoreFocus2MainView();
    const ZvQtBlockSignalUtil block(&combo);
    tell(combo.currentText());
}

#endif
