// SPDX-License-Identifier: MIT
#ifndef COLORDIALOGRUN_H
#define COLORDIALOGRUN_H

#include "dialogbag.h"
#include "messageboxes.h"
#include "modaldriver.h"
#include "modulesession.h"
#include "pictures.h"

#include "base/zvjson.h"
#include "core/zvui.h"

#include "uicolorindextab.h"
#include "uitruecolortab.h"
#include "zvcolordialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

typedef QPair<const char *, int> ColorKey;
typedef QList<ColorKey> ColorKeys;
Q_DECLARE_METATYPE(ColorKey)

inline ZvJsonPtr colorParams(const ColorKeys &keys)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    for (const auto &key : keys)
        params->SetDataI(key.first, key.second);
    return params;
}

inline int packed(int red, int green, int blue)
{
    return red | green << 8 | blue << 16;
}

inline QString badIndexText()
{
    return QStringLiteral("不是有效的颜色名或值。|Zevara|0");
}

inline QString badTrueColorText()
{
    return QStringLiteral("不是有效的真彩色值。|Zevara|0");
}

/// A colour dialog of the service with its parameters, to be run or looked at.
class ColorDialogRun
{
public:
    explicit ColorDialogRun(const ZvJsonPtr &parameters, const ZvRxObjectPtr &helper = nullptr,
                            QWidget *parent = nullptr)
        : params(parameters), adapter(ModuleSession::createDialog(L"ColorDialog", parent)), dialog(findDialog())
    {
        isReady = adapter->onInit(params, helper);
    }
    explicit ColorDialogRun(const ColorKeys &keys) : ColorDialogRun(colorParams(keys)) { }

    /// Shows it without running it.
    bool show()
    {
        dialog->show();
        return QTest::qWaitForWindowExposed(dialog);
    }
    QTabWidget *tabs() const { return dialog->findChild<QTabWidget *>(); }
    ZvIndexColorWnd *indexTab() const { return dialog->findChild<ZvIndexColorWnd *>(); }
    ZvTrueColorWnd *trueColorTab() const { return dialog->findChild<ZvTrueColorWnd *>(); }
    QLineEdit *indexText() const { return indexTab()->findChild<QLineEdit *>(); }
    QLineEdit *trueColorText() const
    {
        return trueColorTab()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QComboBox *modeCombo() const { return trueColorTab()->findChild<QComboBox *>(); }
    /// 0 OK, 1 cancel, 2 help.
    QPushButton *button(int index) const
    {
        return qobject_cast<QPushButton *>(dialog->findChild<QDialogButtonBox *>()->buttons().at(index));
    }
    QPushButton *buttonOf(const QString &text) const
    {
        for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    /// By mode, 1 to 4.
    ZvPaleteWnd *grid(int mode) const { return indexTab()->findChildren<ZvPaleteWnd *>().at(order(mode)); }
    int method() const { return intOf(params, "clrMethod"); }
    int color() const { return intOf(params, "selectClr"); }

    static ZvColorDialog *findDialog()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *dialog = qobject_cast<ZvColorDialog *>(widget))
                return dialog;
        }
        return nullptr;
    }

    ZvJsonPtr params;
    ZvUiDialogBasePtr adapter;
    ZvColorDialog *dialog;
    bool isReady = false;

private:
    /// Children are found depth first: the grids stand in the order of their modes.
    static int order(int mode) { return mode - 1; }
};

/// Centre of a cell of a grid with cells of this side.
inline QPoint cellCentre(int row, int col, int cell)
{
    return QPoint(col * (cell + 2) + 2 + cell / 2, row * (cell + 2) + 2 + cell / 2);
}

/// A mouse event with fractions of a pixel.
inline void sendMouse(QWidget *widget, QEvent::Type type, const QPointF &position,
                      Qt::MouseButton button = Qt::LeftButton)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, position, widget->mapToGlobal(position.toPoint()), isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

#endif
