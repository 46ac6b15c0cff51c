// SPDX-License-Identifier: MIT
#include "private/zvaccessibility.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <utility>

namespace {

constexpr char kContext[] = "ZvAccessibility";
constexpr int kPage = 10;
constexpr int kRing = 2; // pixels around a picker

struct OwnName
{
    const char *className;
    const char *name;
};

// Shown nowhere, so that no text of the library is the source: they stand in English.
constexpr OwnName kOwnNames[] = {
    {"ZvColorComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Colour")},
    {"ZvColorButtonWidget", QT_TRANSLATE_NOOP("ZvAccessibility", "Colour")},
    {"ZvImageComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "List of pictures")},
    {"ZvLayerUltralComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Layer")},
    {"ZvLineTypeComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Line type")},
    {"ZvLineWidthComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Line weight")},
    {"ZvQtImageWidget", QT_TRANSLATE_NOOP("ZvAccessibility", "Picture")},
    {"ZvQtLinetypeTableView", QT_TRANSLATE_NOOP("ZvAccessibility", "Line types")},
    {"ZvUtilsBlockComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Block")},
    {"ZvUtilsBlockUnitComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Block unit")},
    {"ZvUtilsDimStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Dimension style")},
    {"ZvUtilsGradientColorPushButton", QT_TRANSLATE_NOOP("ZvAccessibility", "Gradient")},
    {"ZvUtilsHatchNameComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Hatch pattern")},
    {"ZvUtilsLayerComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Layer")},
    {"ZvUtilsMaterialComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Material")},
    {"ZvUtilsMleaderStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Multileader style")},
    {"ZvUtilsPlotStyleNameComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Plot style")},
    {"ZvUtilsPlotStyleTableComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Plot style table")},
    {"ZvUtilsShadePlotComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Shade plot")},
    {"ZvUtilsTableCellColStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Cell style of the column")},
    {"ZvUtilsTableCellRowStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Cell style of the row")},
    {"ZvUtilsTableCellStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Cell style")},
    {"ZvUtilsTableStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Table style")},
    {"ZvUtilsTextStyleComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Text style")},
    {"ZvUtilsUcsComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "Coordinate system")},
    {"ZvUtilsViewComboBox", QT_TRANSLATE_NOOP("ZvAccessibility", "View")},
};

/// Of the class or of the nearest one that it derives from; null where there is none.
const char *ownNameOf(const QWidget *widget)
{
    for (const QMetaObject *type = widget->metaObject(); type; type = type->superClass()) {
        for (const OwnName &own : kOwnNames) {
            if (qstrcmp(own.className, type->className()) == 0)
                return own.name;
        }
    }
    return nullptr;
}

/// Whether it says by itself what it is.
bool hasLabel(QWidget *widget)
{
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    if (button && !button->text().isEmpty())
        return true;
    const QList<QLabel *> labels = widget->window()->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy() == widget)
            return true;
    }
    return false;
}

class NameWatch : public QObject
{
public:
    explicit NameWatch(QWidget *widget) : QObject(widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::Polish && widget->accessibleName().isEmpty() && !hasLabel(widget))
            fillIn(widget);
        else if (event->type() == QEvent::LanguageChange && !m_given.isEmpty() && widget->accessibleName() == m_given)
            fillIn(widget);
        return QObject::eventFilter(watched, event);
    }

private:
    void fillIn(QWidget *widget)
    {
        m_given = widget->toolTip();
        const char *own = ownNameOf(widget);
        if (m_given.isEmpty() && own)
            m_given = QCoreApplication::translate(kContext, own);
        widget->setAccessibleName(m_given);
        // Under X11 Qt gives the text of a list for its name, and its label apart: the description says what it is.
        if (qobject_cast<QComboBox *>(widget))
            widget->setAccessibleDescription(m_given);
    }

    QString m_given;
};

/// Around a picker that has the keyboard: what the picker paints is its colours alone.
class FocusRing : public QWidget
{
public:
    explicit FocusRing(QWidget *parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.state |= QStyle::State_KeyboardFocusChange;
        option.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
};

class Picker : public QObject
{
public:
    Picker(QWidget *widget, ZvPicker picker) : QObject(widget), m_picker(std::move(picker))
    {
        widget->setFocusPolicy(Qt::TabFocus);
        widget->installEventFilter(this);
    }
    static Picker *of(const QObject *widget)
    {
        for (QObject *child : widget->children()) {
            if (auto *picker = dynamic_cast<Picker *>(child))
                return picker;
        }
        return nullptr;
    }
    const ZvPicker &picker() const { return m_picker; }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = static_cast<QWidget *>(watched);
        switch (event->type()) {
        case QEvent::KeyPress:
            return step(widget, static_cast<QKeyEvent *>(event)->key());
        case QEvent::FocusIn:
        case QEvent::FocusOut:
        case QEvent::Move:
        case QEvent::Resize:
            placeRing(widget, event->type());
            return false;
        default:
            return false;
        }
    }

private:
    bool step(QWidget *widget, int key)
    {
        static const struct
        {
            int key;
            int right;
            int up;
        } steps[] = {{Qt::Key_Right, 1, 0}, {Qt::Key_Left, -1, 0},      {Qt::Key_Up, 0, 1},
                     {Qt::Key_Down, 0, -1}, {Qt::Key_PageUp, 0, kPage}, {Qt::Key_PageDown, 0, -kPage}};
        for (const auto &one : steps) {
            if (one.key != key)
                continue;
            m_picker.step(one.right, one.up);
            if (QAccessible::isActive()) {
                QAccessibleValueChangeEvent changed(widget, m_picker.value());
                QAccessible::updateAccessibility(&changed);
            }
            return true;
        }
        return false;
    }
    void placeRing(QWidget *widget, QEvent::Type event)
    {
        if (!m_ring && event == QEvent::FocusIn && widget->parentWidget())
            m_ring = new FocusRing(widget->parentWidget());
        if (!m_ring)
            return;
        m_ring->setGeometry(widget->geometry().adjusted(-kRing, -kRing, kRing, kRing));
        m_ring->stackUnder(widget);
        m_ring->setVisible(event == QEvent::FocusOut ? false : widget->hasFocus());
    }

    const ZvPicker m_picker;
    QPointer<FocusRing> m_ring; // child of the widget's parent
};

class PickerInterface : public QAccessibleWidget
{
public:
    PickerInterface(QWidget *widget, const Picker *picker)
        : QAccessibleWidget(widget, picker->picker().role), m_picker(picker)
    {
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return m_picker->picker().value();
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty()
            ? QCoreApplication::translate(kContext, m_picker->picker().name)
            : text;
    }

private:
    const Picker *const m_picker; // child of the widget: they go together
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    const Picker *picker = Picker::of(object);
    return picker ? new PickerInterface(static_cast<QWidget *>(object), picker) : nullptr;
}

/// For the time that the library is mapped.
class Factory
{
public:
    Factory() { QAccessible::installFactory(makeInterface); }
    ~Factory() { QAccessible::removeFactory(makeInterface); }
};

} // namespace

void zvNameForReaders(QWidget *widget)
{
    new NameWatch(widget);
}

void zvMakePicker(QWidget *widget, ZvPicker picker)
{
    static const Factory factory;
    new Picker(widget, std::move(picker));
}
