// SPDX-License-Identifier: MIT
#include "dialogbag.h"
#include "modaldriver.h"
#include "modulesession.h"
#include "zevatest.h"

#include "base/zvlog.h"

#include <QCheckBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace BoxButtons;

namespace {

struct LogLine
{
    int level;
    QByteArray file;
    QByteArray function;
    QByteArray text;
};

QVector<LogLine> s_log;

void keepLogLine(int level, int, const char *file, const char *function, const char *text)
{
    s_log.append({level, file, function, text});
}

ZvJsonPtr makeParams(int contentFlag, int flag = 0)
{
    const ZvJsonPtr params = ElementValue::createObject(2);
    params->SetDataI("contentFlag", contentFlag);
    params->SetDataI("flag", flag);
    return params;
}

/// A message box of the service with its parameters.
class Box
{
public:
    explicit Box(const ZvJsonPtr &params, QWidget *parent = nullptr)
        : adapter(ModuleSession::createDialog(L"MessageBox", parent)), dialog(ModuleSession::dialogOf(adapter)),
          isReady(adapter->onInit(params, nullptr))
    {
    }
    /// Shows it without running it, to measure.
    void show()
    {
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
    }

    /// In order of creation.
    QList<QPushButton *> buttons() const { return dialog->findChildren<QPushButton *>(); }
    QList<QCheckBox *> checks() const { return dialog->findChildren<QCheckBox *>(); }
    /// The rows of the outer layout: message, selectors, checks, buttons.
    QBoxLayout *row(int index) const { return qobject_cast<QBoxLayout *>(dialog->layout()->itemAt(index)->layout()); }
    QLabel *messageLabel() const
    {
        for (QLabel *label : dialog->findChildren<QLabel *>()) {
            if (!label->pixmap(Qt::ReturnByValue).isNull())
                continue;
            return label;
        }
        return nullptr;
    }
    QLabel *iconLabel() const
    {
        for (QLabel *label : dialog->findChildren<QLabel *>()) {
            if (!label->pixmap(Qt::ReturnByValue).isNull())
                return label;
        }
        return nullptr;
    }

    ZvUiDialogBasePtr adapter;
    QDialog *dialog;
    bool isReady;
};

struct ButtonSet
{
    const char *name;
    int flag;
    QStringList texts;
    QList<int> ids;
};

QVector<ButtonSet> buttonSets()
{
    return {
        {"OK", 0, {kOk}, {0}},
        {"OK and cancel", 1, {kOk, kCancel}, {1, 2}},
        {"abort, retry and ignore", 2, {kAbort, kRetry, kIgnore}, {3, 4, 5}},
        {"yes, no and cancel", 3, {kYes, kNo, kCancel}, {6, 7, 2}},
        {"yes and no", 4, {kYes, kNo}, {6, 7}},
        {"retry and cancel", 5, {kRetry, kCancel}, {4, 2}},
    };
}

} // namespace

Q_DECLARE_METATYPE(QList<int>)

class TestQtMessageBox : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    // how it is built
    void nullParametersAreRefused();
    void emptyParametersGiveOneOkButton();
    void titleIsTheWindowTitle();
    void windowIconIsItsOwn();
    void windowHasNoHelpMinimizeOrMaximizeButton();
    void maximizeHintIsClearedOnceMore_data();
    void maximizeHintIsClearedOnceMore();
    void rowsStandInOrder();
    void widthIsAtLeast300_data();
    void widthIsAtLeast300();

    // the message row
    void contentBitsDecideWhatIsShown_data();
    void contentBitsDecideWhatIsShown();
    void messageRowHasItsMarginsAndAlignment();
    void messageIsNotWrapped();
    void longLineWidensTheDialog();
    void lowByteOfTheTypeDecidesTheIcon_data();
    void lowByteOfTheTypeDecidesTheIcon();
    void iconIs32By32AndKeepsItsProportions();
    void missingIconFileLeavesTheRowWithoutIcon();

    // the ordinary buttons
    void buttonsOfAFlag_data();
    void buttonsOfAFlag();
    void buttonsStandAtTheRight();
    void pressAnswersTheId_data();
    void pressAnswersTheId();
    void mnemonicPressesTheButton();
    void rejectAnswersTheLastButton_data();
    void rejectAnswersTheLastButton();
    void pressBlocksTheDialogsSignals();
    void pressIsLogged_data();
    void pressIsLogged();

    // the selector buttons
    void selectorAnswersItsIndex_data();
    void selectorAnswersItsIndex();
    void selectorsFillTheWidth();
    void closingWithoutAChoiceAnswersNothing_data();
    void closingWithoutAChoiceAnswersNothing();
    void missingOrEmptySelectorsLeaveNoButton_data();
    void missingOrEmptySelectorsLeaveNoButton();

    // the check boxes
    void toggleWritesTheMaskAndKeepsTheDialogOpen();
    void checksAreIndependent();
    void untouchedChecksAnswerNothing();
    void ninthCheckHasNoBit();
    void thirtyThirdCheckSharesTheFirstBit();
    void checksStandBesideSelectors();

    // the kernel's call
    void kernelsCallGivesTheAnswer();

private:
    QScopedPointer<ModuleSession> m_session;
    QScopedPointer<DialogPictures> m_pictures;
};

void TestQtMessageBox::initTestCase()
{
    m_pictures.reset(new DialogPictures);
    QVERIFY(m_pictures->isReady);
}

void TestQtMessageBox::cleanupTestCase()
{
    m_pictures.reset();
}

void TestQtMessageBox::init()
{
    ZevaTest::init();
    m_session.reset(new ModuleSession);
}

void TestQtMessageBox::cleanup()
{
    m_session.reset();
    ZevaTest::cleanup();
}

void TestQtMessageBox::nullParametersAreRefused()
{
    const Box box(nullptr);
    QVERIFY(!box.isReady);
    QVERIFY(!box.dialog->layout());
    QCOMPARE(box.buttons().size(), 0);
    QCOMPARE(zvrxNumRefs(box.adapter), 1);
}

void TestQtMessageBox::emptyParametersGiveOneOkButton()
{
    const Box box(ElementValue::createObject(2));
    QVERIFY(box.isReady);
    QCOMPARE(textsOf(box.buttons()), QStringList{kOk});
    QCOMPARE(box.dialog->findChildren<QLabel *>().size(), 0);
    QCOMPARE(box.dialog->windowTitle(), QString());
    QVERIFY(box.dialog->isModal());
}

void TestQtMessageBox::titleIsTheWindowTitle()
{
    const ZvJsonPtr params = makeParams(1);
    params->SetDataSW("title", ZvString(L"图层 - 无法置为当前"));
    QCOMPARE(Box(params).dialog->windowTitle(), QStringLiteral("图层 - 无法置为当前"));
}

void TestQtMessageBox::windowIconIsItsOwn()
{
    QWidget parent;
    QPixmap red(16, 16);
    red.fill(Qt::red);
    parent.setWindowIcon(QIcon(red));
    const Box box(makeParams(1), &parent);
    QVERIFY(box.dialog->testAttribute(Qt::WA_SetWindowIcon));
    QCOMPARE(box.dialog->windowIcon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
    parent.setWindowIcon(QIcon());
    QVERIFY(!box.dialog->windowIcon().isNull());
}

void TestQtMessageBox::windowHasNoHelpMinimizeOrMaximizeButton()
{
    const Box box(makeParams(1));
    QCOMPARE(int(box.dialog->windowFlags()) & 0x1C000, 0);
    QVERIFY(box.dialog->windowFlags() & Qt::WindowCloseButtonHint);
    QCOMPARE(box.dialog->windowType(), Qt::Dialog);
}

void TestQtMessageBox::maximizeHintIsClearedOnceMore_data()
{
    QTest::addColumn<int>("hide"); // -1: the key is missing
    QTest::addColumn<bool>("hasHint");
    QTest::newRow("missing") << -1 << true;
    QTest::newRow("false") << 0 << true;
    QTest::newRow("true") << 1 << false;
}

void TestQtMessageBox::maximizeHintIsClearedOnceMore()
{
    QFETCH(int, hide);
    QFETCH(bool, hasHint);
    const ZvUiDialogBasePtr adapter = ModuleSession::createDialog(L"MessageBox");
    QDialog *dialog = ModuleSession::dialogOf(adapter);
    dialog->setWindowFlags(dialog->windowFlags() | Qt::WindowMaximizeButtonHint);
    const ZvJsonPtr params = makeParams(1);
    if (hide >= 0)
        params->SetDataB("WindowMaximizeButtonHint", hide == 1);
    QVERIFY(adapter->onInit(params, nullptr));
    QCOMPARE(dialog->windowFlags().testFlag(Qt::WindowMaximizeButtonHint), hasHint);
}

void TestQtMessageBox::rowsStandInOrder()
{
    const Box box(makeParams(1 | 8));
    const auto *outer = qobject_cast<QVBoxLayout *>(box.dialog->layout());
    QVERIFY(outer);
    QCOMPARE(outer->count(), 4);
    QVERIFY(qobject_cast<QHBoxLayout *>(box.row(0)));
    QVERIFY(qobject_cast<QVBoxLayout *>(box.row(1)));
    QVERIFY(qobject_cast<QVBoxLayout *>(box.row(2)));
    QVERIFY(qobject_cast<QHBoxLayout *>(box.row(3)));
}

void TestQtMessageBox::widthIsAtLeast300_data()
{
    QTest::addColumn<int>("contentFlag");
    QTest::addColumn<int>("flag");
    QTest::newRow("OK alone, no content") << 0 << 0;
    QTest::newRow("no button at all") << 0 << 7;
    QTest::newRow("a short message") << 1 << 0;
}

void TestQtMessageBox::widthIsAtLeast300()
{
    QFETCH(int, contentFlag);
    QFETCH(int, flag);
    const ZvJsonPtr params = makeParams(contentFlag, flag);
    params->SetDataSW("msg", ZvString(L"x"));
    const Box box(params);
    QCOMPARE(box.dialog->minimumWidth(), 300);
    int width = 0;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        width = dialog->width();
        dialog->close();
    });
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(width, 300);
}

void TestQtMessageBox::contentBitsDecideWhatIsShown_data()
{
    QTest::addColumn<int>("contentFlag");
    QTest::addColumn<bool>("hasMessage");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<int>("checks");
    const QStringList selectors = {QStringLiteral("甲"), QStringLiteral("乙")};
    const QStringList ordinary = {kOk, kCancel};
    QTest::newRow("0: buttons alone") << 0 << false << ordinary << 0;
    QTest::newRow("1: message") << 1 << true << ordinary << 0;
    QTest::newRow("3: bit 2 has no effect") << 3 << true << ordinary << 0;
    QTest::newRow("4: selectors, no ordinary buttons") << 4 << false << selectors << 0;
    QTest::newRow("5: message and selectors, no ordinary buttons") << 5 << true << selectors << 0;
    QTest::newRow("8: checks") << 8 << false << ordinary << 3;
    QTest::newRow("9: message and checks") << 9 << true << ordinary << 3;
    QTest::newRow("12: selectors and checks") << 12 << false << selectors << 3;
    QTest::newRow("13: all") << 13 << true << selectors << 3;
    QTest::newRow("0xF2: other bits have no effect") << 0xF2 << false << ordinary << 0;
}

void TestQtMessageBox::contentBitsDecideWhatIsShown()
{
    QFETCH(int, contentFlag);
    QFETCH(bool, hasMessage);
    QFETCH(QStringList, buttons);
    QFETCH(int, checks);
    const ZvJsonPtr params = makeParams(contentFlag, 1);
    params->SetDataI("dlgtype", 48);
    params->SetDataSW("msg", ZvString(L"消息"));
    setTexts(params, "selBtnText", {QStringLiteral("甲"), QStringLiteral("乙")});
    setTexts(params, "selCheckText", {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    const Box box(params);
    QCOMPARE(textsOf(box.buttons()), buttons);
    QCOMPARE(box.checks().size(), checks);
    QCOMPARE(box.iconLabel() != nullptr, hasMessage);
    QCOMPARE(box.messageLabel() ? box.messageLabel()->text() : QString(),
             hasMessage ? QStringLiteral("消息") : QString());
    QCOMPARE(box.row(3)->count() == 0, (contentFlag & 4) != 0);
}

void TestQtMessageBox::messageRowHasItsMarginsAndAlignment()
{
    const ZvJsonPtr params = makeParams(1);
    params->SetDataI("dlgtype", 48);
    params->SetDataSW("msg", ZvString(L"消息"));
    const Box box(params);
    QBoxLayout *row = box.row(0);
    QCOMPARE(row->contentsMargins(), QMargins(0, 0, 0, 8));
    QCOMPARE(row->count(), 3);
    QCOMPARE(row->itemAt(0)->widget(), box.iconLabel());
    QCOMPARE(row->itemAt(0)->alignment(), Qt::Alignment(Qt::AlignLeft));
    QCOMPARE(row->itemAt(1)->widget(), box.messageLabel());
    QCOMPARE(row->itemAt(1)->alignment(), Qt::Alignment(Qt::AlignLeft));
    QVERIFY(row->itemAt(2)->spacerItem());
    QCOMPARE(box.messageLabel()->contentsMargins(), QMargins(8, 0, 0, 0));
}

void TestQtMessageBox::messageIsNotWrapped()
{
    const ZvJsonPtr params = makeParams(1);
    params->SetDataSW("msg", ZvString(L"第一行\n第二行"));
    const Box box(params);
    QVERIFY(!box.messageLabel()->wordWrap());
    QCOMPARE(box.messageLabel()->text(), QStringLiteral("第一行\n第二行"));
}

void TestQtMessageBox::longLineWidensTheDialog()
{
    const ZvJsonPtr params = makeParams(1);
    params->SetDataS("msg", QByteArray(40, 'W').constData());
    Box box(params);
    box.show();
    const int textWidth = box.messageLabel()->fontMetrics().horizontalAdvance(box.messageLabel()->text());
    QVERIFY(textWidth > 300);
    QVERIFY(box.dialog->width() >= textWidth + 8);
}

void TestQtMessageBox::lowByteOfTheTypeDecidesTheIcon_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QColor>("color"); // invalid: no icon
    QTest::newRow("32 question") << 32 << DialogPictures::question();
    QTest::newRow("48 information") << 48 << DialogPictures::information();
    QTest::newRow("64 warning") << 64 << DialogPictures::warning();
    QTest::newRow("80 error") << 80 << DialogPictures::error();
    QTest::newRow("0x130 is 0x30") << 0x130 << DialogPictures::information();
    QTest::newRow("0x7F50 is 0x50") << 0x7F50 << DialogPictures::error();
    QTest::newRow("0 none") << 0 << QColor();
    QTest::newRow("1 none") << 1 << QColor();
    QTest::newRow("33 none") << 33 << QColor();
    QTest::newRow("96 none") << 96 << QColor();
    QTest::newRow("0x3000 none") << 0x3000 << QColor();
    QTest::newRow("-1 none") << -1 << QColor();
}

void TestQtMessageBox::lowByteOfTheTypeDecidesTheIcon()
{
    QFETCH(int, type);
    QFETCH(QColor, color);
    const ZvJsonPtr params = makeParams(1);
    params->SetDataI("dlgtype", type);
    params->SetDataSW("msg", ZvString(L"消息"));
    const Box box(params);
    const QLabel *icon = box.iconLabel();
    QCOMPARE(icon != nullptr, color.isValid());
    QVERIFY(!icon || icon->pixmap(Qt::ReturnByValue).toImage().pixelColor(4, 4) == color);
    QVERIFY(box.messageLabel());
}

void TestQtMessageBox::iconIs32By32AndKeepsItsProportions()
{
    const ZvJsonPtr params = makeParams(1);
    params->SetDataI("dlgtype", 64);
    Box box(params);
    box.show();
    const QLabel *icon = box.iconLabel();
    QVERIFY(icon);
    QCOMPARE(icon->minimumSize(), QSize(32, 32));
    QCOMPARE(icon->maximumSize(), QSize(32, 32));
    QCOMPARE(icon->size(), QSize(32, 32));
    QVERIFY(icon->hasScaledContents());
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).size(), QSize(32, 16)); // the file is twice as wide as high
}

void TestQtMessageBox::missingIconFileLeavesTheRowWithoutIcon()
{
    const QString file = m_pictures->path("error.png");
    const QString aside = m_pictures->path("aside.png");
    QVERIFY(QFile::rename(file, aside));
    const ZvJsonPtr params = makeParams(1);
    params->SetDataI("dlgtype", 80);
    params->SetDataSW("msg", ZvString(L"消息"));
    const Box box(params);
    QVERIFY(QFile::rename(aside, file));
    QVERIFY(box.isReady);
    QVERIFY(!box.iconLabel());
    QCOMPARE(box.row(0)->count(), 2);
    QCOMPARE(box.messageLabel()->text(), QStringLiteral("消息"));
}

void TestQtMessageBox::buttonsOfAFlag_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QStringList>("btnText");
    QTest::addColumn<QStringList>("texts");
    const QStringList own = {QStringLiteral("关闭(&C)"), QStringLiteral("Zoom"), QStringLiteral("跳过")};
    for (const ButtonSet &set : buttonSets()) {
        QTest::newRow(set.name) << set.flag << QStringList() << set.texts;
        QTest::addRow("%s, the caller's texts are ignored", set.name) << set.flag << own << set.texts;
    }
    QTest::newRow("6: the caller's texts") << 6 << own << own;
    QTest::newRow("6 with one text") << 6 << QStringList(own.first()) << QStringList(own.first());
    QTest::newRow("6 with no texts gives OK") << 6 << QStringList() << QStringList{kOk};
    QTest::newRow("7: none") << 7 << own << QStringList();
    QTest::newRow("100: none") << 100 << own << QStringList();
}

void TestQtMessageBox::buttonsOfAFlag()
{
    QFETCH(int, flag);
    QFETCH(QStringList, btnText);
    QFETCH(QStringList, texts);
    const ZvJsonPtr params = makeParams(1, flag);
    if (!btnText.isEmpty())
        setTexts(params, "btnText", btnText);
    QCOMPARE(textsOf(Box(params).buttons()), texts);

    // An empty array is as good as none.
    if (btnText.isEmpty())
        setTexts(params, "btnText", btnText);
    QCOMPARE(textsOf(Box(params).buttons()), texts);
}

void TestQtMessageBox::buttonsStandAtTheRight()
{
    Box box(makeParams(1, 3));
    box.show();
    QBoxLayout *row = box.row(3);
    QCOMPARE(row->contentsMargins(), QMargins(0, 0, 0, 8));
    QCOMPARE(row->count(), 4);
    QVERIFY(row->itemAt(0)->spacerItem());
    const QList<QPushButton *> buttons = box.buttons();
    for (int i = 0; i < buttons.size(); ++i) {
        QCOMPARE(row->itemAt(i + 1)->widget(), buttons.at(i));
        QCOMPARE(int(row->itemAt(i + 1)->alignment()), 0x82);
    }
    QVERIFY(buttons.at(0)->x() < buttons.at(1)->x());
    QVERIFY(buttons.at(1)->x() < buttons.at(2)->x());
    const int rightMargin = box.dialog->layout()->contentsMargins().right();
    QCOMPARE(buttons.last()->geometry().right() + 1, box.dialog->width() - rightMargin);
}

void TestQtMessageBox::pressAnswersTheId_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QStringList>("btnText");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("id");
    for (const ButtonSet &set : buttonSets()) {
        for (int i = 0; i < set.ids.size(); ++i)
            QTest::addRow("%s: button %d", set.name, i) << set.flag << QStringList() << i << set.ids.at(i);
    }
    const QStringList own = {QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙")};
    for (int i = 0; i < own.size(); ++i)
        QTest::addRow("the caller's button %d", i) << 6 << own << i << i;
    QTest::newRow("6 with no texts") << 6 << QStringList() << 0 << 0;
}

void TestQtMessageBox::pressAnswersTheId()
{
    QFETCH(int, flag);
    QFETCH(QStringList, btnText);
    QFETCH(int, position);
    QFETCH(int, id);
    const ZvJsonPtr params = makeParams(1, flag);
    if (!btnText.isEmpty())
        setTexts(params, "btnText", btnText);
    const Box box(params);
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(box.buttons().at(position), Qt::LeftButton); });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(box.adapter->getResult(), "result"), 1);
    QCOMPARE(intOf(params, "ControlBtn"), id);
    QVERIFY(!params->hasKey("selectedBtn"));
    QVERIFY(!params->hasKey("selectedCheck"));
}

void TestQtMessageBox::mnemonicPressesTheButton()
{
    const ZvJsonPtr params = makeParams(1, 4);
    const Box box(params);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        dialog->activateWindow();
        QVERIFY(zevaWaitForActive(dialog));
        QTest::keyClick(dialog, Qt::Key_N, Qt::AltModifier);
        QTRY_VERIFY(!dialog->isVisible()); // the button is seen going down first
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "ControlBtn"), 7);
}

void TestQtMessageBox::rejectAnswersTheLastButton_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("id");
    for (const ButtonSet &set : buttonSets())
        QTest::newRow(set.name) << set.flag << set.ids.last();
    QTest::newRow("6: three texts of the caller's") << 6 << 2;
    QTest::newRow("7: no button, no answer") << 7 << kMissing;
}

void TestQtMessageBox::rejectAnswersTheLastButton()
{
    QFETCH(int, flag);
    QFETCH(int, id);
    for (const ModalDriver::Action &way : waysOut()) {
        const ZvJsonPtr params = makeParams(1, flag);
        setTexts(params, "btnText", {QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙")});
        const Box box(params);
        ModalDriver driver;
        driver.next(way);
        QCOMPARE(box.adapter->doModal(), 2);
        QVERIFY(driver.finished());
        QCOMPARE(intOf(params, "ControlBtn"), id);
    }
}

void TestQtMessageBox::pressBlocksTheDialogsSignals()
{
    const Box box(makeParams(1, 1));
    QSignalSpy accepted(box.dialog, &QDialog::accepted);
    QSignalSpy finished(box.dialog, &QDialog::finished);
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(box.buttons().first(), Qt::LeftButton); });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(accepted.count(), 0);
    QCOMPARE(finished.count(), 0);
    QVERIFY(!box.dialog->signalsBlocked());
}

void TestQtMessageBox::pressIsLogged_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("isLogged");
    QTest::newRow("level 0") << 0 << true;
    QTest::newRow("level 3") << 3 << true;
    QTest::newRow("level 4") << 4 << false;
    QTest::newRow("level 6") << 6 << false;
}

void TestQtMessageBox::pressIsLogged()
{
    QFETCH(int, level);
    QFETCH(bool, isLogged);
    const Box box(makeParams(1, 1));
    s_log.clear();
    const int levelBefore = zeva_log_level();
    const ZvLogHandler handlerBefore = zvSetLogHandler(keepLogLine);
    zeva_set_log_level(level);
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(box.buttons().last(), Qt::LeftButton); });
    const int code = box.adapter->doModal();
    zeva_set_log_level(levelBefore);
    zvSetLogHandler(handlerBefore);

    QCOMPARE(code, 1);
    QVERIFY(driver.finished());
    QCOMPARE(s_log.size(), isLogged ? 2 : 0);
    for (const LogLine &line : qAsConst(s_log)) {
        QCOMPARE(line.level, 3);
        QCOMPARE(line.file, QByteArray("qtutils/common/qt_messagebox"));
        QCOMPARE(line.function, QByteArray("operator()"));
    }
    if (isLogged) {
        QCOMPARE(s_log.at(0).text, QByteArray("ZvQtMessageBox: ButtonClicked"));
        QCOMPARE(s_log.at(1).text, QByteArray("ZvQtMessageBox: m_pMessageBox.accept()"));
    }
}

void TestQtMessageBox::selectorAnswersItsIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
    QTest::newRow("last") << 2;
}

void TestQtMessageBox::selectorAnswersItsIndex()
{
    QFETCH(int, index);
    const ZvJsonPtr params = makeParams(5, 1);
    setTexts(params, "selBtnText", {QStringLiteral("覆盖"), QStringLiteral("另存为"), QStringLiteral("放弃")});
    const Box box(params);
    QSignalSpy accepted(box.dialog, &QDialog::accepted);
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QStringLiteral("m_pGroupSelectors =  %1").arg(index)));
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(box.buttons().at(index), Qt::LeftButton); });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "selectedBtn"), index);
    QVERIFY(!params->hasKey("ControlBtn"));
    QCOMPARE(accepted.count(), 1);
}

void TestQtMessageBox::selectorsFillTheWidth()
{
    const ZvJsonPtr params = makeParams(4);
    setTexts(params, "selBtnText", {QStringLiteral("甲"), QStringLiteral("乙")});
    Box box(params);
    box.show();
    QBoxLayout *column = box.row(1);
    QCOMPARE(column->contentsMargins(), QMargins(0, 0, 0, 8));
    QCOMPARE(column->count(), 2);
    const QMargins margins = box.dialog->layout()->contentsMargins();
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(column->itemAt(i)->widget(), box.buttons().at(i));
        QCOMPARE(column->itemAt(i)->alignment(), Qt::Alignment());
        QCOMPARE(box.buttons().at(i)->width(), box.dialog->width() - margins.left() - margins.right());
    }
    QVERIFY(box.buttons().at(0)->y() < box.buttons().at(1)->y());
}

void TestQtMessageBox::closingWithoutAChoiceAnswersNothing_data()
{
    QTest::addColumn<int>("contentFlag");
    QTest::newRow("message and selectors") << 5;
    QTest::newRow("selectors and checks") << 12;
}

void TestQtMessageBox::closingWithoutAChoiceAnswersNothing()
{
    QFETCH(int, contentFlag);
    const ZvJsonPtr params = makeParams(contentFlag, 1);
    setTexts(params, "selBtnText", {QStringLiteral("甲"), QStringLiteral("乙")});
    const Box box(params);
    ModalDriver driver;
    driver.next([](QDialog *dialog) { dialog->close(); });
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QVERIFY(!params->hasKey("ControlBtn"));
    QVERIFY(!params->hasKey("selectedBtn"));
}

void TestQtMessageBox::missingOrEmptySelectorsLeaveNoButton_data()
{
    QTest::addColumn<bool>("isMissing");
    QTest::newRow("missing") << true;
    QTest::newRow("empty") << false;
}

void TestQtMessageBox::missingOrEmptySelectorsLeaveNoButton()
{
    QFETCH(bool, isMissing);
    const ZvJsonPtr params = makeParams(4, 1);
    if (!isMissing)
        setTexts(params, "selBtnText", QStringList());
    const Box box(params);
    QVERIFY(box.isReady);
    QCOMPARE(box.buttons().size(), 0);
    ModalDriver driver;
    driver.next([](QDialog *dialog) { dialog->close(); });
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QVERIFY(!params->hasKey("ControlBtn"));
}

void TestQtMessageBox::toggleWritesTheMaskAndKeepsTheDialogOpen()
{
    const ZvJsonPtr params = makeParams(9, 1);
    setTexts(params, "selCheckText", {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    const Box box(params);
    QList<int> masks;
    bool stayedOpen = false;
    const auto toggle = [&](int index) {
        QTest::mouseClick(box.checks().at(index), Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, box.checks().at(index)->height() / 2));
        masks << intOf(params, "selectedCheck");
    };
    QTest::ignoreMessage(QtDebugMsg, "m_pGroupCheck =  0 , val =  true");
    QTest::ignoreMessage(QtDebugMsg, "m_pGroupCheck =  2 , val =  true");
    QTest::ignoreMessage(QtDebugMsg, "m_pGroupCheck =  0 , val =  false");
    QTest::ignoreMessage(QtDebugMsg, "m_pGroupCheck =  1 , val =  true");
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        toggle(0);
        toggle(2);
        toggle(0);
        toggle(1);
        stayedOpen = dialog->isVisible();
        QTest::mouseClick(box.buttons().first(), Qt::LeftButton);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QVERIFY(stayedOpen);
    QCOMPARE(masks, (QList<int>{1, 5, 4, 6}));
    QCOMPARE(intOf(params, "selectedCheck"), 6);
    QCOMPARE(intOf(params, "ControlBtn"), 1);
}

void TestQtMessageBox::checksAreIndependent()
{
    const ZvJsonPtr params = makeParams(8);
    setTexts(params, "selCheckText", {QStringLiteral("a"), QStringLiteral("b")});
    const Box box(params);
    box.checks().at(0)->setChecked(true);
    box.checks().at(1)->setChecked(true);
    QVERIFY(box.checks().at(0)->isChecked());
    QCOMPARE(intOf(params, "selectedCheck"), 3);
    QCOMPARE(box.row(2)->contentsMargins(), QMargins(0, 0, 0, 8));
    QCOMPARE(box.row(2)->itemAt(0)->widget(), box.checks().at(0));
    QCOMPARE(box.row(2)->itemAt(0)->alignment(), Qt::Alignment());
}

void TestQtMessageBox::untouchedChecksAnswerNothing()
{
    const ZvJsonPtr params = makeParams(9);
    setTexts(params, "selCheckText", {QStringLiteral("a"), QStringLiteral("b")});
    const Box box(params);
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(box.buttons().first(), Qt::LeftButton); });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QVERIFY(!params->hasKey("selectedCheck"));
    QCOMPARE(intOf(params, "ControlBtn"), 0);
}

void TestQtMessageBox::ninthCheckHasNoBit()
{
    const ZvJsonPtr params = makeParams(8);
    QStringList texts;
    for (int i = 0; i < 9; ++i)
        texts << QString::number(i);
    setTexts(params, "selCheckText", texts);
    const Box box(params);
    box.checks().at(7)->setChecked(true);
    QCOMPARE(intOf(params, "selectedCheck"), 128);
    params->SetDataI("selectedCheck", -5);
    box.checks().at(8)->setChecked(true);
    QCOMPARE(intOf(params, "selectedCheck"), 128); // rewritten, unchanged
    box.checks().at(7)->setChecked(false);
    QCOMPARE(intOf(params, "selectedCheck"), 0);
}

void TestQtMessageBox::thirtyThirdCheckSharesTheFirstBit()
{
    const ZvJsonPtr params = makeParams(8);
    QStringList texts;
    for (int i = 0; i < 33; ++i)
        texts << QString::number(i);
    setTexts(params, "selCheckText", texts);
    const Box box(params);
    box.checks().at(32)->setChecked(true);
    QCOMPARE(intOf(params, "selectedCheck"), 1);
    box.checks().at(31)->setChecked(true);
    QCOMPARE(intOf(params, "selectedCheck"), 1);
}

void TestQtMessageBox::checksStandBesideSelectors()
{
    const ZvJsonPtr params = makeParams(12);
    setTexts(params, "selBtnText", {QStringLiteral("甲"), QStringLiteral("乙")});
    setTexts(params, "selCheckText", {QStringLiteral("不再提示")});
    const Box box(params);
    ModalDriver driver;
    driver.next([&](QDialog *) {
        box.checks().first()->toggle();
        QTest::mouseClick(box.buttons().at(1), Qt::LeftButton);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "selectedCheck"), 1);
    QCOMPARE(intOf(params, "selectedBtn"), 1);
    QVERIFY(box.buttons().last()->geometry().bottom() < box.checks().first()->y());
}

void TestQtMessageBox::kernelsCallGivesTheAnswer()
{
    ModalDriver driver;
    QString title;
    QString message;
    driver.next([&](QDialog *dialog) {
        title = dialog->windowTitle();
        const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
        message = labels.isEmpty() ? QString() : labels.last()->text();
        QTest::mouseClick(dialog->findChildren<QPushButton *>().first(), Qt::LeftButton);
    });
    const ZvJsonPtr answer = zvuiMessageBoxEx(L"输出数据", L" plan.dxf 已经存在。\n是否替换它？", nullptr, 1, 1, 64);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(answer, "ControlBtn"), 1);
    QCOMPARE(title, QStringLiteral("输出数据"));
    QCOMPARE(message, QStringLiteral(" plan.dxf 已经存在。\n是否替换它？"));
}

ZEVA_TEST_MAIN(TestQtMessageBox)
#include "tst_qt_messagebox.moc"
