// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "zvmenupushbutton.h"
#include "zvtextedit.h"
#include "zvunitlineedit.h"
#include "zvutilsgradientcolorpushbutton.h"
#include "zvutilsiconpushbutton.h"

#include <QAction>
#include <QCoreApplication>

namespace {

constexpr int kGradientPatterns = 9;
constexpr QSize kGradientButton{72, 56};
constexpr char kButtonImages[] = ":/res/file.png$:/res/computer.png";
constexpr char kButtonStates[] = "normal$pressed";

QString text(const char *english)
{
    return QCoreApplication::translate("ControlPages", english);
}

ControlPageData textEdit()
{
    const auto make = [](QWidget *parent, const QString &content) {
        auto *box = new ZvTextEdit(parent);
        box->setTabChangesFocus(true);
        box->setPlainText(content);
        box->setMinimumHeight(48);
        return box;
    };
    ControlPageData page{"ZvTextEdit", "textBox",
                         PAGE_TEXT("A text box without a context menu; a host may offer one of its own."),
                         ControlPageData::kPlain | ControlPageData::kLong, [make](bool, QWidget *parent) -> QWidget * {
                             return make(parent, text("Right button and menu key open nothing here."));
                         }};
    page.variants = {{"ReadOnly", PAGE_TEXT("Read only"), [make](QWidget *parent) {
                          auto *box = make(parent, text("Only to be read."));
                          box->setReadOnly(true);
                          return box;
                      }}};
    page.fillLong = [](QWidget &control) {
        auto &box = static_cast<ZvTextEdit &>(control);
        for (int i = 1; i <= 200; ++i)
            box.append(text("Line %1").arg(i));
    };
    page.finish = [](ControlPage &shown) {
        for (QWidget *control : shown.controls())
            shown.log().listenTo(*control, ControlPage::nameOf(*control), "customContextMenuRequested(QPoint)");
    };
    return page;
}

/// A field whose unit can be changed, as a host's.
class UnitField : public ZvUnitLineEdit
{
public:
    UnitField(const QString &value, QWidget *parent) : ZvUnitLineEdit(value, parent) { }
    void setUnit(EngineeringUnits unit)
    {
        m_units = unit;
        setText(text()); // shown anew
    }
};

ControlPageData unitField()
{
    ControlPageData page{
        "ZvUnitLineEdit", "unitField", PAGE_TEXT("A field for a number with a unit, which takes nothing but a number."),
        ControlPageData::kPlain,
        [](bool, QWidget *parent) -> QWidget * { return new UnitField(QStringLiteral("3.50"), parent); }};
    // In all units but the first the library tells the host that it converts none.
    page.settings = {
        {"value",
         PAGE_TEXT("Value"),
         {QStringLiteral("3.50")},
         [](QWidget &control, const QVariant &value) { static_cast<UnitField &>(control).setText(value.toString()); }},
        {"otherUnit",
         PAGE_TEXT("In another unit"),
         {false},
         [](QWidget &control, const QVariant &on) {
             static_cast<UnitField &>(control).setUnit(on.toBool() ? ZvUnitLineEdit::kUnitOne
                                                                   : ZvUnitLineEdit::kUnitAsGiven);
         }},
    };
    return page;
}

ControlPageData menuButton()
{
    ControlPageData page{
        "ZvMenuPushButton", "menuButton",
        PAGE_TEXT("A push button whose right third opens a menu of actions, and the rest an empty one."),
        ControlPageData::kPlain, [](bool, QWidget *parent) -> QWidget * {
            auto *button = new ZvMenuPushButton(parent);
            button->setText(text("Actions at the right third"));
            for (const char *name : {PAGE_TEXT("Copy"), PAGE_TEXT("Move"), PAGE_TEXT("Turn")})
                button->addMenu(new QAction(text(name), button));
            return button;
        }};
    page.variants = {{"Plain", PAGE_TEXT("Without actions"), [](QWidget *parent) {
                          auto *button = new ZvMenuPushButton(parent);
                          button->setText(text("No actions"));
                          return button;
                      }}};
    page.finish = [](ControlPage &shown) {
        for (QWidget *control : shown.controls()) {
            for (QAction *action : control->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly))
                shown.log().listenTo(*action, action->text(), "triggered(bool)");
        }
    };
    return page;
}

ControlVariant iconVariant(const char *suffix, const char *label, const char *images, bool isFramed)
{
    return {suffix, label, [images, isFramed](QWidget *parent) {
                auto *button
                    = new ZvUtilsIconPushButton(QLatin1String(images), QLatin1String(kButtonStates), isFramed, parent);
                button->resize(24, 24);
                return button;
            }};
}

ControlPageData iconButton()
{
    const ControlVariant framed = iconVariant("", "", kButtonImages, true);
    ControlPageData page{
        "ZvUtilsIconPushButton", "iconButton",
        PAGE_TEXT("A push button that is a picture; its state, which is its object name, chooses which."),
        ControlPageData::kPlain, [make = framed.make](bool, QWidget *parent) { return make(parent); }};
    page.variants = {
        iconVariant("Plain", PAGE_TEXT("Without a frame"), kButtonImages, false),
        iconVariant("Empty", PAGE_TEXT("Without a picture"), "", true),
    };
    const auto setState = [](QWidget &control, bool isPressed) {
        control.setObjectName(isPressed ? QStringLiteral("pressed") : QStringLiteral("normal"));
        control.update();
    };
    ValueKind states{0};
    states.choices = QStringList{QStringLiteral("normal"), QStringLiteral("pressed")};
    page.settings = {{"state", PAGE_TEXT("State"), states,
                      [setState](QWidget &control, const QVariant &value) { setState(control, value.toInt() == 1); }}};
    // A press changes the state, as a host's switch does.
    page.finish = [setState](ControlPage &shown) {
        for (QWidget *control : shown.controls()) {
            auto *button = static_cast<ZvUtilsIconPushButton *>(control);
            QObject::connect(button, &QPushButton::clicked, button, [button, setState] {
                setState(*button, button->objectName() == QLatin1String("normal"));
            });
        }
    };
    return page;
}

typedef ZvUtilsGradientColorPushButton Gradient;

template <class Value>
ControlSetting gradientSetting(const char *id, const char *label, const ValueKind &kind, Value Gradient::*member)
{
    return {id, label, kind, [member](QWidget &control, const QVariant &value) {
                static_cast<Gradient &>(control).*member = value.value<Value>();
                control.update();
            }};
}

ControlPageData gradientButton()
{
    const auto make = [](int pattern, QWidget *parent) {
        auto *button = new Gradient(parent);
        button->m_pattern = pattern;
        button->m_selected = pattern == 1;
        button->setFixedSize(kGradientButton);
        return button;
    };
    static const char *const labels[]
        = {PAGE_TEXT("One colour"), PAGE_TEXT("Pattern 1"), PAGE_TEXT("Pattern 2"), PAGE_TEXT("Pattern 3"),
           PAGE_TEXT("Pattern 4"),  PAGE_TEXT("Pattern 5"), PAGE_TEXT("Pattern 6"), PAGE_TEXT("Pattern 7"),
           PAGE_TEXT("Pattern 8"),  PAGE_TEXT("Pattern 9")};
    static const char *const suffixes[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
    ControlPageData page{"ZvUtilsGradientColorPushButton", "gradientButton",
                         PAGE_TEXT("A button with a swatch of a gradient fill, in one of nine patterns."), 0, nullptr};
    for (int pattern = 0; pattern <= kGradientPatterns; ++pattern)
        page.variants << ControlVariant{suffixes[pattern], labels[pattern],
                                        [make, pattern](QWidget *parent) { return make(pattern, parent); }};
    page.variants << ControlVariant{"Disabled", PAGE_TEXT("Disabled"), [make](QWidget *parent) {
                                        Gradient *button = make(4, parent);
                                        button->setEnabled(false);
                                        return button;
                                    }};
    page.columns = 4;
    ValueKind angle{0};
    angle.least = 0;
    angle.most = 360;
    angle.step = 15;
    angle.unit = QStringLiteral("\u00b0");
    ValueKind shade{99};
    shade.least = -99;
    shade.most = 99;
    page.settings = {
        gradientSetting("firstColor", PAGE_TEXT("First colour"), {QColor(0, 0, 255)}, &Gradient::m_firstColor),
        gradientSetting("secondColor", PAGE_TEXT("Second colour"), {QColor(255, 255, 0)}, &Gradient::m_secondColor),
        gradientSetting("twoColors", PAGE_TEXT("Two colours"), {false}, &Gradient::m_twoColors),
        gradientSetting("centered", PAGE_TEXT("Centered"), {false}, &Gradient::m_centered),
        gradientSetting("angle", PAGE_TEXT("Angle"), angle, &Gradient::m_angle),
        gradientSetting("shade", PAGE_TEXT("Shade"), shade, &Gradient::m_shade),
    };
    page.finish = [](ControlPage &shown) {
        for (QWidget *control : shown.controls()) {
            QObject::connect(static_cast<Gradient *>(control), &QPushButton::clicked, &shown, [&shown, control] {
                for (QWidget *other : shown.controls()) {
                    static_cast<Gradient *>(other)->m_selected = other == control;
                    other->update();
                }
            });
        }
    };
    return page;
}

} // namespace

QVector<ControlPageData> smallWidgetPages()
{
    return {textEdit(), unitField(), menuButton(), iconButton(), gradientButton()};
}
