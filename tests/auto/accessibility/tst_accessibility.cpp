// SPDX-License-Identifier: MIT
// Every widget and dialog of the library, as a screen reader and a keyboard find it.
#include "combodriver.h"
#include "everywidget.h"
#include "pseudolanguage.h"
#include "readable.h"
#include "uicolorindextab.h"
#include "uitruecolortab.h"

#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>

namespace {

/// What only its host can name, and the host's ways to do it.
bool isNamedByItsHost(const EveryWidget::Maker &maker)
{
    static const QStringList names = {"icon button", "menu button", "text edit", "unit edit"};
    return names.contains(QLatin1String(maker.name));
}

QString nameOf(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

/// Under X11 Qt gives the text of a list for its name: what the list is stands in the description.
QString whatItIs(QWidget *widget)
{
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(widget);
    return reader->text(qobject_cast<QComboBox *>(widget) ? QAccessible::Description : QAccessible::Name);
}

QString valueOf(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Value);
}

QAccessible::Role roleOf(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->role();
}

} // namespace

Q_DECLARE_METATYPE(const EveryWidget::Maker *)

class TestAccessibility : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void everythingHasAName_data() { rows(); }
    void everythingHasAName();
    void everythingIsReachedByTheTabKey_data() { rows(); }
    void everythingIsReachedByTheTabKey();
    void listsAreListsAndTellTheirValue_data() { rows(); }
    void listsAreListsAndTellTheirValue();
    void namesAreTranslated_data() { rows(); }
    void namesAreTranslated();

    void theHostsNameStands_data();
    void theHostsNameStands();
    void aToolTipNamesWhatHasNoText();

    void arrowsMoveInAGrid_data();
    void arrowsMoveInAGrid();
    void gridsOfTheDialogWriteWhatIsPicked();
    void fieldAndStripFollowTheKeys();
    void slidersFollowTheKeys();
    void aClickLeavesTheKeyboardWhereItIs();
    void otherKeysPassAPicker();

    void layerIsSwitchedByTheKeyboard_data();
    void layerIsSwitchedByTheKeyboard();
    void layerIsMadeCurrentByTheKeyboard();
    void layerListOpensOnTheNames();
    void placeIsChosenByTheKeyboard();
    void previewIsWorkedByTheKeyboard();

private:
    static void rows();
};

void TestAccessibility::rows()
{
    QTest::addColumn<const EveryWidget::Maker *>("maker");
    for (const EveryWidget::Maker &maker : EveryWidget::all())
        QTest::newRow(maker.name) << &maker;
}

void TestAccessibility::everythingHasAName()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const EveryWidget made(*maker);
    QVERIFY(made.isReady());
    if (isNamedByItsHost(*maker))
        made.widget()->setToolTip(QStringLiteral("caller"));
    if (maker->kind == EveryWidget::kControl)
        made.widget()->ensurePolished();
    QVERIFY(made.show());
    QCOMPARE(withoutName(made.window()).join(QLatin1Char('\n')), QString());
    if (maker->kind == EveryWidget::kControl && !qobject_cast<QLabel *>(made.widget()))
        QVERIFY(!whatItIs(made.widget()).isEmpty());
    if (auto *tabs = made.window()->findChild<QTabWidget *>()) {
        for (int mode = 0; mode < 2; ++mode) {
            tabs->setCurrentIndex(1);
            tabs->widget(1)->findChild<QComboBox *>()->setCurrentIndex(mode);
            QCOMPARE(withoutName(made.window()).join(QLatin1Char('\n')), QString());
        }
        tabs->widget(1)->findChild<QComboBox *>()->setCurrentIndex(0);
    }
}

void TestAccessibility::everythingIsReachedByTheTabKey()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const EveryWidget made(*maker);
    QVERIFY(made.show());
    QCOMPARE(outOfReach(made.window()).join(QLatin1Char('\n')), QString());
    if (auto *tabs = made.window()->findChild<QTabWidget *>()) {
        for (int mode = 0; mode < 2; ++mode) {
            tabs->setCurrentIndex(1);
            tabs->widget(1)->findChild<QComboBox *>()->setCurrentIndex(mode);
            QCOMPARE(outOfReach(made.window()).join(QLatin1Char('\n')), QString());
        }
        tabs->widget(1)->findChild<QComboBox *>()->setCurrentIndex(0);
    }
}

void TestAccessibility::listsAreListsAndTellTheirValue()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const EveryWidget made(*maker);
    QVERIFY(made.show());
    const QList<QWidget *> widgets = made.window()->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (auto *combo = qobject_cast<QComboBox *>(widget)) {
            QCOMPARE(roleOf(combo), QAccessible::ComboBox);
            QCOMPARE(valueOf(combo), combo->currentText());
        } else if (qobject_cast<QPushButton *>(widget)) {
            const QAccessible::Role role = roleOf(widget);
            QVERIFY(role == QAccessible::PushButton || role == QAccessible::ButtonMenu);
        }
    }
}

void TestAccessibility::namesAreTranslated()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const PseudoLanguage language;
    const EveryWidget made(*maker);
    QVERIFY(made.show());
    const QList<QWidget *> widgets = made.window()->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const QString name = widget->accessibleName();
        QVERIFY2(name.isEmpty() || PseudoLanguage::isTranslated(name) || language.texts.contains(name)
                     || name.startsWith(QLatin1String("caller")),
                 qPrintable(name));
    }
}

void TestAccessibility::theHostsNameStands_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<QString>("name");
    QTest::newRow("none of the host's") << 0 << "Line weight";
    QTest::newRow("an accessible name") << 1 << "host";
    QTest::newRow("a label's buddy") << 2 << "host";
    QTest::newRow("a tool tip") << 3 << "host";
}

void TestAccessibility::theHostsNameStands()
{
    QFETCH(int, way);
    QWidget window;
    auto *combo = new ZvLineWidthComboBox(true, 15, &window);
    auto *label = new QLabel(QStringLiteral("&host"), &window);
    if (way == 1)
        combo->setAccessibleName(QStringLiteral("host"));
    else if (way == 2)
        label->setBuddy(combo);
    else if (way == 3)
        combo->setToolTip(QStringLiteral("host"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QFETCH(QString, name);
    if (way != 2) {
        QCOMPARE(combo->accessibleName(), name);
        return;
    }
    QCOMPARE(combo->accessibleName(), QString());
    const auto labels = QAccessible::queryAccessibleInterface(combo)->relations(QAccessible::Label);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first().first->text(QAccessible::Name), QStringLiteral("host"));
}

void TestAccessibility::aToolTipNamesWhatHasNoText()
{
    QWidget window;
    auto *icon = new ZvUtilsIconPushButton(QString(), QString(), true, &window);
    icon->setToolTip(QStringLiteral("host"));
    auto *gradient = new ZvUtilsGradientColorPushButton(&window);
    auto *menu = new ZvMenuPushButton(&window);
    menu->setText(QStringLiteral("text"));
    menu->setToolTip(QStringLiteral("host"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(nameOf(icon), QStringLiteral("host"));
    QCOMPARE(nameOf(gradient), QStringLiteral("Gradient"));
    QCOMPARE(nameOf(menu), QStringLiteral("text"));
}

void TestAccessibility::arrowsMoveInAGrid_data()
{
    QTest::addColumn<int>("grid");
    QTest::addColumn<int>("start");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("value");
    QTest::newRow("right") << 2 << 1 << Qt::Key_Right << 2 << QStringLiteral("Index colour 2, 黄");
    QTest::newRow("left") << 2 << 9 << Qt::Key_Left << 8 << "Index colour 8";
    QTest::newRow("left at the edge") << 2 << 1 << Qt::Key_Left << 1 << QStringLiteral("Index colour 1, 红");
    QTest::newRow("right at the edge") << 3 << 255 << Qt::Key_Right << 255 << "Index colour 255";
    QTest::newRow("down") << 0 << 18 << Qt::Key_Down << 16 << "Index colour 16";
    QTest::newRow("up") << 1 << 19 << Qt::Key_Up << 17 << "Index colour 17";
    QTest::newRow("to the lowest row") << 0 << 18 << Qt::Key_PageDown << 10 << "Index colour 10";
    QTest::newRow("the first key of a grid without a frame") << 3 << 1 << Qt::Key_Right << 250 << "Index colour 250";
}

void TestAccessibility::arrowsMoveInAGrid()
{
    QFETCH(int, grid);
    QFETCH(int, start);
    QFETCH(Qt::Key, key);
    const EveryWidget made(
        {"", EveryWidget::kDialog, [](EveryWidget &dialog) { EveryWidgetMakers::colorDialog(dialog, 195, 1); }});
    QVERIFY(made.show());
    const QList<ZvPaleteWnd *> grids = made.window()->findChildren<ZvPaleteWnd *>();
    QCOMPARE(grids.size(), 4);
    for (ZvPaleteWnd *one : grids)
        one->setSelected(start);
    ZvPaleteWnd *target = grids.at(grid);
    QCOMPARE(roleOf(target), QAccessible::ColorChooser);
    target->setFocus(Qt::TabFocusReason);
    QVERIFY(target->hasFocus());
    QTest::keyClick(target, key);
    QTEST(target->selected(), "index");
    QTEST(valueOf(target), "value");
}

void TestAccessibility::gridsOfTheDialogWriteWhatIsPicked()
{
    const ZvUiDialogBasePtr adapter = ModuleSession::createDialog(L"ColorDialog");
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataI("clrMethod", 195);
    params->SetDataI("selectClr", 1);
    QVERIFY(adapter->onInit(params, nullptr));
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        ZvPaleteWnd *grid = dialog->findChildren<ZvPaleteWnd *>().at(2);
        grid->setFocus(Qt::TabFocusReason);
        QTest::keyClick(grid, Qt::Key_Right);
        QTest::keyClick(grid, Qt::Key_Right);
        QTest::keyClick(grid, Qt::Key_Return);
    });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "clrMethod"), 195);
    QCOMPARE(intOf(params, "selectClr"), 3);
}

void TestAccessibility::fieldAndStripFollowTheKeys()
{
    const EveryWidget made(
        {"", EveryWidget::kDialog, [](EveryWidget &dialog) { EveryWidgetMakers::colorDialog(dialog, 194, 0x404080); }});
    QVERIFY(made.show());
    auto *field = made.window()->findChild<ZvHSLPallete *>();
    auto *strip = made.window()->findChild<ZvColorLightWnd *>();
    const QList<QSpinBox *> spins = made.window()->findChild<ZvHSLWnd *>()->findChildren<QSpinBox *>();
    QCOMPARE(spins.size(), 3);
    const int hue = spins[0]->value();
    const int saturation = spins[1]->value();
    const int lightness = spins[2]->value();
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field, Qt::Key_Right);
    QTest::keyClick(field, Qt::Key_Up);
    QTest::keyClick(field, Qt::Key_PageUp);
    QCOMPARE(spins[0]->value(), hue + 1);
    QCOMPARE(spins[1]->value(), saturation + 11);
    QCOMPARE(valueOf(field), QStringLiteral("%1, %2").arg(hue + 1).arg(saturation + 11));
    strip->setFocus(Qt::TabFocusReason);
    QTest::keyClick(strip, Qt::Key_Down);
    QTest::keyClick(strip, Qt::Key_PageDown);
    QCOMPARE(spins[2]->value(), lightness - 11);
    QCOMPARE(valueOf(strip), QString::number(lightness - 11));
    QCOMPARE(roleOf(strip), QAccessible::Slider);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(strip, Qt::Key_PageDown);
    QCOMPARE(spins[2]->value(), 0);
}

void TestAccessibility::slidersFollowTheKeys()
{
    const EveryWidget made(
        {"", EveryWidget::kDialog, [](EveryWidget &dialog) { EveryWidgetMakers::colorDialog(dialog, 194, 0x404080); }});
    QVERIFY(made.show());
    auto *mode = made.window()->findChild<ZvTrueColorWnd *>()->findChild<QComboBox *>();
    mode->setCurrentIndex(1);
    auto *panel = made.window()->findChild<ZvRGBWnd *>();
    const QList<ZvRGBSlider *> sliders = panel->findChildren<ZvRGBSlider *>();
    const QList<QSpinBox *> spins = panel->findChildren<QSpinBox *>();
    QCOMPARE(sliders.size(), 3);
    const int expected[] = {0x81, 0x41, 0x41};
    for (ZvRGBSlider *slider : sliders) {
        const QString name = nameOf(slider);
        const int place = name == QLatin1String("Red") ? 0 : name == QLatin1String("Green") ? 1 : 2;
        slider->setFocus(Qt::TabFocusReason);
        QTest::keyClick(slider, Qt::Key_Right);
        QCOMPARE(valueOf(slider), QString::number(expected[place]));
        QTest::keyClick(slider, Qt::Key_PageUp);
        QTest::keyClick(slider, Qt::Key_Left);
        QCOMPARE(valueOf(slider), QString::number(expected[place] + 9));
    }
    mode->setCurrentIndex(0);
}

void TestAccessibility::aClickLeavesTheKeyboardWhereItIs()
{
    const EveryWidget made(
        {"", EveryWidget::kDialog, [](EveryWidget &dialog) { EveryWidgetMakers::colorDialog(dialog, 195, 1); }});
    QVERIFY(made.show());
    auto *edit = made.window()->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>();
    edit->setFocus();
    ZvPaleteWnd *grid = made.window()->findChildren<ZvPaleteWnd *>().at(2);
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
    QCOMPARE(grid->selected(), 2);
    QVERIFY(edit->hasFocus());
}

void TestAccessibility::otherKeysPassAPicker()
{
    const EveryWidget made(
        {"", EveryWidget::kDialog, [](EveryWidget &dialog) { EveryWidgetMakers::colorDialog(dialog, 195, 1); }});
    QVERIFY(made.show());
    ZvPaleteWnd *grid = made.window()->findChildren<ZvPaleteWnd *>().at(2);
    grid->setFocus(Qt::TabFocusReason);
    QTest::keyClick(grid, Qt::Key_L);
    QTRY_COMPARE(made.window()->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>()->text(),
                 QStringLiteral("BYLAYER"));
}

void TestAccessibility::layerIsSwitchedByTheKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("left");
    QTest::addColumn<QString>("flags");
    QTest::newRow("Space on the lock") << Qt::Key_Space << 2 << "locked";
    QTest::newRow("Return on the sun") << Qt::Key_Return << 3 << "frozen";
    QTest::newRow("Enter on the bulb") << Qt::Key_Enter << 4 << "off";
    QTest::newRow("farther than there are buttons") << Qt::Key_Space << 9 << "off";
}

void TestAccessibility::layerIsSwitchedByTheKeyboard()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, left);
    addLayer(L"walls");
    const EveryWidget made({"", EveryWidget::kControl, EveryWidgetMakers::hooked<ZvLayerUltralComboBox>});
    QVERIFY(made.show());
    auto *combo = static_cast<QComboBox *>(made.widget());
    combo->showPopup();
    QTRY_VERIFY(combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_End);
    while (combo->view()->currentIndex().row() + 1 < combo->count())
        QTest::keyClick(combo->view(), Qt::Key_Down);
    for (int i = 0; i < left; ++i)
        QTest::keyClick(combo->view(), Qt::Key_Left);
    QTest::keyClick(combo->view(), key);
    QVERIFY(combo->view()->isVisible());
    const QString flags = read<ZvDbLayerTableRecord>(layerNamed(L"walls"), [](const ZvDbLayerTableRecord &layer) {
        return QString(QLatin1String(layer.isOff() ? "off" : "") + QLatin1String(layer.isFrozen() ? "frozen" : "")
                       + QLatin1String(layer.isLocked() ? "locked" : ""));
    });
    combo->hidePopup();
    QTEST(flags, "flags");
}

void TestAccessibility::layerIsMadeCurrentByTheKeyboard()
{
    const ZvDbObjectId walls = addLayer(L"walls");
    const EveryWidget made({"", EveryWidget::kControl, EveryWidgetMakers::hooked<ZvLayerUltralComboBox>});
    QVERIFY(made.show());
    auto *combo = static_cast<QComboBox *>(made.widget());
    combo->showPopup();
    QTRY_VERIFY(combo->view()->isVisible());
    while (combo->view()->currentIndex().row() + 1 < combo->count())
        QTest::keyClick(combo->view(), Qt::Key_Down);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    QTRY_VERIFY(!combo->view()->isVisible());
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), walls);
}

void TestAccessibility::layerListOpensOnTheNames()
{
    addLayer(L"walls");
    const EveryWidget made({"", EveryWidget::kControl, EveryWidgetMakers::hooked<ZvLayerUltralComboBox>});
    QVERIFY(made.show());
    auto *combo = static_cast<QComboBox *>(made.widget());
    auto *table = static_cast<QTableWidget *>(combo->view());
    auto *frame = table->findChild<QWidget *>(QStringLiteral("zv_frameOfButton"));
    for (int times = 0; times < 2; ++times) {
        combo->showPopup();
        QTRY_VERIFY(table->isVisible());
        QTest::keyClick(table, Qt::Key_Down);
        QVERIFY(!frame->isVisible());
        QTest::keyClick(table, Qt::Key_Left);
        QVERIFY(frame->isVisible());
        QCOMPARE(frame->geometry(), table->visualRect(table->currentIndex()));
        combo->hidePopup();
    }
}

void TestAccessibility::placeIsChosenByTheKeyboard()
{
    const EveryWidget made(EveryWidget::all().at(8));
    QVERIFY(made.show());
    auto *dialog = qobject_cast<QFileDialog *>(made.widget());
    QVERIFY(dialog);
    auto *list = dialog->findChild<QListWidget *>();
    QCOMPARE(nameOf(list), QStringLiteral("Places"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        dialog->setDirectory(QDir::tempPath());
        list->setFocus(Qt::TabFocusReason);
        list->setCurrentRow(0);
        QTest::keyClick(list, key);
        QTRY_COMPARE(dialog->directory().absolutePath(), QStringLiteral("/"));
        QVERIFY(dialog->isVisible());
    }
}

void TestAccessibility::previewIsWorkedByTheKeyboard()
{
    const EveryWidget made({"", EveryWidget::kDialog, EveryWidgetMakers::preview});
    QVERIFY(made.isReady());
    ModalDriver driver;
    int pressed = 0;
    driver.next([&](QDialog *dialog) {
        const QList<QToolButton *> buttons = dialog->findChild<QToolBar *>()->findChildren<QToolButton *>();
        for (QToolButton *button : buttons) {
            if (button->text() != QStringLiteral("打印"))
                continue;
            button->setFocus(Qt::TabFocusReason);
            ++pressed;
            QTest::keyClick(button, Qt::Key_Space);
        }
    });
    QCOMPARE(made.adapter()->doModal(), 6);
    QVERIFY(driver.finished());
    QCOMPARE(pressed, 1);
}

ZEVA_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
