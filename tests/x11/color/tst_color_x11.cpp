// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "modaldriver.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "xdotool.h"
#include "zevatest.h"
#include "zvcolorcombobox.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTabWidget>
#include <QWindow>

namespace {

/// The text entry of the tab that is seen.
QLineEdit *textOf(const QDialog *dialog)
{
    // The entries of spin boxes and combo boxes lie deeper than the tabs' own.
    for (QLineEdit *edit : dialog->findChildren<QLineEdit *>()) {
        if (edit->isVisible() && edit->parentWidget() == dialog->findChild<QTabWidget *>()->currentWidget())
            return edit;
    }
    return nullptr;
}

/// The text of the label whose buddy has the keyboard.
QString focusLabel(const QDialog *dialog)
{
    for (const QLabel *label : dialog->findChildren<QLabel *>()) {
        if (label->isVisible() && label->buddy() && label->buddy() == QApplication::focusWidget())
            return label->text();
    }
    return QString();
}

} // namespace

/// Colour combo and colour dialog with the pointer and the keyboard of a real display.
class tst_color_x11 : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void listOpensBesideTheCombo();
    void pickByPointerGivesTheKeyboardBack();
    void pickByKeyboardGivesTheKeyboardBack();
    void escapeLeavesTheListAlone();
    void cancelledDialogGivesTheKeyboardBack();
    void dialogStandsOverItsWindowAndBlocksIt();
    void pickInTheDialogByPointer();
    void lettersOfTheIndexTab();
    void lettersOfTheTrueColorTab_data();
    void lettersOfTheTrueColorTab();

private:
    ZvColorComboBox &combo() { return *m_session->window().findChild<ZvColorComboBox *>(); }
    bool isListOpen() { return combo().view()->isVisible(); }
    QString colorOfLine()
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(m_line, ZvDb::kForRead);
        return colorText(entity->color());
    }
    QString currentColor() { return colorText(m_session->database().cecolor()); }
    static QPoint onScreen(const QWidget &widget, const QPoint &place) { return widget.mapToGlobal(place); }
    static QPoint middleOf(const QWidget &widget) { return onScreen(widget, widget.rect().center()); }
    void openList()
    {
        QVERIFY(clickAt(middleOf(combo())));
        QTRY_VERIFY(isListOpen());
        QVERIFY(QTest::qWaitForWindowExposed(combo().view()->window()));
    }
    /// What is typed goes to the drawing.
    void expectKeyboardAtTheView()
    {
        QTRY_VERIFY(m_session->view().hasFocus());
        QVERIFY(typeText(QStringLiteral("CIRC")));
        QTRY_COMPARE(m_session->window().commandLine()->text(), QStringLiteral("CIRC"));
        QVERIFY(pressKey(QStringLiteral("Escape")));
    }

    std::unique_ptr<WorkbenchSession> m_session;
    ZvDbObjectId m_line;
};

void tst_color_x11::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    m_session->window().activateWindow();
    QVERIFY(waitForKeyboard(&m_session->window()));
    m_session->newDrawing();
    QTRY_VERIFY(m_session->view().hasFocus());
    m_line = m_session->addLine({100, 50, 0}, {300, 50, 0});
    QTRY_VERIFY(m_session->view().isComplete());
    QVERIFY(clickAt(m_session->view().mapToGlobal(m_session->pixel(200, 50))));
    QTRY_COMPARE(m_session->selection(), std::vector<ZvDbObjectId>({m_line}));
}

void tst_color_x11::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

// ---- the list -------------------------------------------------------------------------------------------------------

void tst_color_x11::listOpensBesideTheCombo()
{
    openList();
    const QWidget *list = combo().view()->window();
    const QRect onScreen = list->frameGeometry();
    const QRect box(combo().mapToGlobal(QPoint(0, 0)), combo().size());
    QVERIFY(list->screen()->geometry().contains(onScreen));
    QVERIFY(onScreen.left() < box.right() && onScreen.right() > box.left());
    QVERIFY(onScreen.adjusted(0, -1, 0, 1).intersects(box)); // no gap between them
    QVERIFY(combo().view()->visualRect(combo().model()->index(combo().count() - 1, 0)).bottom()
            <= combo().view()->viewport()->height()); // all rows are seen
    QVERIFY(pressKey(QStringLiteral("Escape")));
    QTRY_VERIFY(!isListOpen());
}

void tst_color_x11::pickByPointerGivesTheKeyboardBack()
{
    openList();
    const QModelIndex blue = combo().model()->index(combo().findText(QStringLiteral("蓝")), 0);
    QVERIFY(pointAt(onScreen(*combo().view()->viewport(), combo().view()->visualRect(blue).center())));
    // A list that has just opened takes no click before the pointer has moved in it.
    QTRY_COMPARE(combo().view()->currentIndex(), blue);
    QVERIFY(click());
    QTRY_COMPARE(colorOfLine(), QStringLiteral("5"));
    QVERIFY(!isListOpen());
    QCOMPARE(combo().currentText(), QStringLiteral("蓝"));
    expectKeyboardAtTheView();
}

void tst_color_x11::pickByKeyboardGivesTheKeyboardBack()
{
    openList();
    QVERIFY(xdotool({QStringLiteral("key"), QStringLiteral("Home"), QStringLiteral("Down"), QStringLiteral("Down"),
                     QStringLiteral("Return")}));
    QTRY_COMPARE(colorOfLine(), QStringLiteral("1"));
    QVERIFY(!isListOpen());
    expectKeyboardAtTheView();
    QVERIFY(pressKey(QStringLiteral("ctrl+z")));
    QTRY_COMPARE(colorOfLine(), QStringLiteral("ByLayer"));
    QTRY_COMPARE(combo().currentText(), QStringLiteral("ByLayer"));
}

void tst_color_x11::escapeLeavesTheListAlone()
{
    openList();
    QVERIFY(xdotool({QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Down"), QStringLiteral("Escape")}));
    QTRY_VERIFY(!isListOpen());
    QCOMPARE(combo().currentText(), QStringLiteral("ByLayer"));
    QCOMPARE(colorOfLine(), QStringLiteral("ByLayer"));
}

// ---- the dialog -----------------------------------------------------------------------------------------------------

void tst_color_x11::cancelledDialogGivesTheKeyboardBack()
{
    bool hadKeyboard = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        hadKeyboard = waitForKeyboard(dialog);
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    openList();
    QVERIFY(xdotool({QStringLiteral("key"), QStringLiteral("End"), QStringLiteral("Return")}));
    QTRY_VERIFY(driver.finished());
    QVERIFY(hadKeyboard);
    QTRY_COMPARE(combo().currentText(), QStringLiteral("ByLayer"));
    QCOMPARE(colorOfLine(), QStringLiteral("ByLayer"));
    expectKeyboardAtTheView();
}

void tst_color_x11::dialogStandsOverItsWindowAndBlocksIt()
{
    constexpr QPoint kFrames(8, 40); // of the window manager, not the same all round
    const QRect window = m_session->window().frameGeometry();
    QSize size;
    bool isModal = false;
    bool belongsToWindow = false;
    bool isPlaced = false;
    bool hadKeyboard = false;
    std::vector<ZvDbObjectId> selection;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        isModal = dialog->isModal();
        belongsToWindow = dialog->windowHandle()->transientParent() == m_session->window().windowHandle();
        size = dialog->size();
        isPlaced = QTest::qWaitFor([&] {
            const QPoint offset = dialog->frameGeometry().center() - window.center();
            return window.contains(dialog->frameGeometry()) && qAbs(offset.x()) <= kFrames.x()
                && qAbs(offset.y()) <= kFrames.y();
        });
        // beside the dialog, on nothing of the drawing: that would begin a window
        QVERIFY(clickAt(m_session->view().mapToGlobal(QPoint(20, 20))));
        QVERIFY(pressKey(QStringLiteral("Escape")));
        hadKeyboard = QTest::qWaitFor([&] { return !dialog->isVisible(); });
        selection = m_session->selection();
    });
    m_session->action("colorDialogIndex")->trigger();
    QVERIFY(driver.finished());
    QVERIFY(isModal);
    QVERIFY(belongsToWindow);
    QVERIFY(isPlaced);
    QVERIFY(hadKeyboard); // Escape went to the dialog, although the click was beside it
    QCOMPARE(size, QSize(375, 395));
    QCOMPARE(selection, std::vector<ZvDbObjectId>({m_line}));
}

void tst_color_x11::pickInTheDialogByPointer()
{
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        QWidget *grid = nullptr; // the first is the one of the even indices
        for (QWidget *widget : dialog->findChildren<QWidget *>()) {
            if (!grid && widget->inherits("ZvPaleteWnd"))
                grid = widget;
        }
        QVERIFY(clickAt(onScreen(*grid, QPoint(2 * 14 + 8, 4 * 14 + 8)))); // third column, lowest row
        QTRY_COMPARE(textOf(dialog)->text(), QStringLiteral("30"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    openList();
    QVERIFY(xdotool({QStringLiteral("key"), QStringLiteral("End"), QStringLiteral("Return")}));
    QTRY_VERIFY(driver.finished());
    QTRY_COMPARE(colorOfLine(), QStringLiteral("30"));
    QCOMPARE(combo().currentText(), QStringLiteral("颜色 30"));
    expectKeyboardAtTheView();
}

void tst_color_x11::lettersOfTheIndexTab()
{
    QStringList texts;
    bool isSelected = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        QLineEdit *text = textOf(dialog);
        for (const char *key : {"k", "l", "alt+k", "alt+l"}) {
            const QString before = text->text();
            QVERIFY(pressKey(QLatin1String(key)));
            QTRY_VERIFY(text->text() != before);
            texts << text->text();
        }
        QVERIFY(pressKey(QStringLiteral("c")));
        QTRY_VERIFY(text->hasFocus());
        isSelected = text->selectedText() == text->text();
        QVERIFY(typeText(QStringLiteral("42")));
        QTRY_COMPARE(text->text(), QStringLiteral("42"));
        QVERIFY(pressKey(QStringLiteral("alt+c")));
        QTRY_COMPARE(text->selectedText(), QStringLiteral("42"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    m_session->action("colorDialogIndex")->trigger();
    QVERIFY(driver.finished());
    QCOMPARE(texts,
             QStringList({QStringLiteral("BYBLOCK"), QStringLiteral("BYLAYER"), QStringLiteral("BYBLOCK"),
                          QStringLiteral("BYLAYER")}));
    QVERIFY(isSelected);
    QVERIFY(m_session->window().commandLine()->history().endsWith(
        QStringLiteral("{\"result\": 1} clrMethod=195 selectClr=42")));
}

void tst_color_x11::lettersOfTheTrueColorTab_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("label"); // of what has the keyboard then
    const struct
    {
        const char *mode;
        const char *key;
        const char *label;
    } rows[] = {
        {"HSL", "m", "颜色模式(&M):"}, {"HSL", "c", "颜色(&C):"}, {"HSL", "u", "色调(&U)"},
        {"HSL", "s", "饱和度(&S)"},    {"HSL", "l", "亮度(&L)"},  {"RGB", "m", "颜色模式(&M):"},
        {"RGB", "c", "颜色(&C):"},     {"RGB", "r", "红(&R):"},   {"RGB", "g", "绿(&G):"},
        {"RGB", "b", "蓝(&B):"},
    };
    for (const auto &row : rows) {
        for (const char *modifier : {"", "alt+"}) {
            QTest::addRow("%s, %s%s", row.mode, modifier, row.key)
                << row.mode << QLatin1String(modifier) + QLatin1String(row.key) << row.label;
        }
    }
}

void tst_color_x11::lettersOfTheTrueColorTab()
{
    QFETCH(QString, mode);
    QFETCH(QString, key);
    QFETCH(QString, label);
    QString focused;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        dialog->findChild<QComboBox *>()->setCurrentText(mode);
        dialog->findChild<QTabWidget *>()->setFocus();
        QVERIFY(pressKey(key));
        QTRY_VERIFY(!focusLabel(dialog).isEmpty());
        focused = focusLabel(dialog);
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    m_session->action("colorDialogTrueColor")->trigger();
    QVERIFY(driver.finished());
    QCOMPARE(focused, label);
}

ZEVA_TEST_MAIN(tst_color_x11)
#include "tst_color_x11.moc"
