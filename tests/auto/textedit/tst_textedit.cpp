// SPDX-License-Identifier: MIT
#include "zevatest.h"
#include "zvtextedit.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

class TestTextEdit : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void noContextMenuComes_data();
    void noContextMenuComes();
    void slotIsFoundByItsName();
    void editsLikeATextBox();
    void wheelScrolls();
};

void TestTextEdit::noContextMenuComes_data()
{
    QTest::addColumn<int>("reason");
    QTest::addColumn<bool>("readOnly");
    QTest::newRow("right button") << int(QContextMenuEvent::Mouse) << false;
    QTest::newRow("menu key") << int(QContextMenuEvent::Keyboard) << false;
    QTest::newRow("right button, read only") << int(QContextMenuEvent::Mouse) << true;
}

void TestTextEdit::noContextMenuComes()
{
    QFETCH(int, reason);
    QFETCH(bool, readOnly);
    ZvTextEdit box(nullptr);
    box.setPlainText(QStringLiteral("text"));
    box.setReadOnly(readOnly);
    box.show();
    QVERIFY(zevaWaitForActive(&box));
    const QSignalSpy asked(&box, &QWidget::customContextMenuRequested);
    const QPoint place(10, 10);
    QTest::mouseClick(box.viewport(), Qt::RightButton, Qt::NoModifier, place);
    QContextMenuEvent event(QContextMenuEvent::Reason(reason), place, box.viewport()->mapToGlobal(place));
    QApplication::sendEvent(box.viewport(), &event);
    QCOMPARE(asked.size(), 1);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(box.findChildren<QMenu *>().isEmpty());
    QCOMPARE(box.toPlainText(), QStringLiteral("text"));
}

void TestTextEdit::slotIsFoundByItsName()
{
    ZvTextEdit box(nullptr);
    QVERIFY(QMetaObject::invokeMethod(&box, "slot_Menu", Q_ARG(QPoint, QPoint(1, 1))));
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(box.contextMenuPolicy(), Qt::CustomContextMenu);
    // It is what hears of a menu that was asked for: a host that wants to be the only one may take it off.
    QVERIFY(QObject::disconnect(&box, &QWidget::customContextMenuRequested, &box, &ZvTextEdit::slot_Menu));
}

void TestTextEdit::editsLikeATextBox()
{
    ZvTextEdit box(nullptr);
    box.show();
    QVERIFY(zevaWaitForActive(&box));
    QTest::keyClicks(&box, QStringLiteral("ab"));
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClicks(&box, QStringLiteral("c"));
    QCOMPARE(box.toPlainText(), QStringLiteral("ab\nc"));
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(box.toPlainText() != QStringLiteral("ab\nc"));
}

void TestTextEdit::wheelScrolls()
{
    ZvTextEdit box(nullptr);
    box.resize(100, 60);
    box.setPlainText(QStringLiteral("line\n").repeated(50));
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(box.verticalScrollBar()->value(), 0);
    const QPointF place(10, 10);
    QWheelEvent event(place, box.viewport()->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box.viewport(), &event);
    QVERIFY(box.verticalScrollBar()->value() > 0);
}

ZEVA_TEST_MAIN(TestTextEdit)
#include "tst_textedit.moc"
