// SPDX-License-Identifier: MIT
#include "colordialogrun.h"
#include "metamethods.h"
#include "stranger.h"
#include "zevatest.h"

#include "zvqthelpservice.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

/// Counts what it is told.
class CountingHelper : public ZvRxObjectImpl<ZvUiHelper>
{
public:
    ZvJsonPtr onNotify(ZvJsonPtr params) override
    {
        ++calls;
        lastParams = params;
        method = intOf(params, "clrMethod");
        color = intOf(params, "selectClr");
        const ZvColorDialog *dialog = ColorDialogRun::findDialog();
        sawOpenDialog = dialog && dialog->isVisible();
        return nullptr;
    }
    int calls = 0;
    ZvJsonPtr lastParams;
    int method = kMissing; ///< As it stood in the tree.
    int color = kMissing;
    bool sawOpenDialog = false;
};

class CountingHelp : public ZvRxObjectImpl<ZvQtHelpService>
{
public:
    void showHelp() override { ++calls; }
    int calls = 0;
};

ZvString helpKey()
{
    return ZvString(wchar_t(1));
}

/// What ends the dialog in a test of its codes.
enum Ending { kOkButton, kCancelButton, kEnterKey, kEscapeKey, kCloseWindow, kSwatch, kCell };

} // namespace

Q_DECLARE_METATYPE(Ending)

class TestColorDialog : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    // the frame
    void methodsAreAsTold();
    void frameIsAsTold();
    void sizeIsFixed();
    void dialogIsModalWhileItRunsOnly();
    void adapterHidesTheDialogAndOwnsIt();
    void parentIsTheWindowAskedFor_data();
    void parentIsTheWindowAskedFor();
    void nullParametersAreAnEmptyTree();

    // which tabs
    void bitsChooseTheTabs_data();
    void bitsChooseTheTabs();
    void keysOfAnotherKind_data();
    void keysOfAnotherKind();
    void methodChoosesTheFirstTab_data();
    void methodChoosesTheFirstTab();
    void unknownMethodStillCarriesTheColour();
    void firstTabIsChosenWithoutCarrying();

    // carrying the colour
    void indexTabGoesToTrueColor_data();
    void indexTabGoesToTrueColor();
    void refusedIndexTextKeepsTheIndexTab();
    void trueColorComesBack_data();
    void trueColorComesBack();
    void refusedTrueColorGoesBackWithTheColourBefore();
    void roundTripTurnsAnIndexIntoTrueColor();
    void secondRoundTripLosesTheTrueColor();
    void otherPositionsCarryNothing();
    void oneTabCarriesNothing();

    // ending it
    void endingsHaveTheirCodes_data();
    void endingsHaveTheirCodes();
    void refusedTextKeepsTheDialogOpen_data();
    void refusedTextKeepsTheDialogOpen();
    void swatchWithRefusedTextCancels_data();
    void swatchWithRefusedTextCancels();
    void swatchOfTheTrueColorTabAccepts();
    void trueColorTabWritesItsText();
    void cancelLeavesWhatWasClicked();
    void cancelValidatesNothing_data();
    void cancelValidatesNothing();
    void lonelyTrueColorTabIsAcceptedWithoutAnAnswer();
    void enterInATextEntryAccepts();

    // helper and help
    void helperIsToldOnAcceptOnly();
    void helperIsToldBeforeTheDialogCloses_data();
    void helperIsToldBeforeTheDialogCloses();
    void helperIsHeldByTheAdapterAlone();
    void helperOfAnotherClassIsNotCalled();
    void helpButtonShowsTheHostsHelp();
    void helpButtonWithoutHelpDoesNothing();
    void helpOfAForeignClassThrows();

private:
    QScopedPointer<ModuleSession> m_session;
    QScopedPointer<MessageBoxes> m_messages;
};

void TestColorDialog::init()
{
    ZevaTest::init();
    m_session.reset(new ModuleSession);
    m_messages.reset(new MessageBoxes);
}

void TestColorDialog::cleanup()
{
    m_messages.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void TestColorDialog::methodsAreAsTold()
{
    QCOMPARE(ownMethods(ZvColorTabWidget::staticMetaObject), QStringList());
    QCOMPARE(ownMethods(ZvColorDialog::staticMetaObject),
             signaturesOf({"slot_currentTabChange(int)", "slot_help_button_clicked()"}));
}

void TestColorDialog::frameIsAsTold()
{
    const ColorDialogRun run(ColorKeys{});
    QVERIFY(run.isReady);
    QCOMPARE(run.dialog->windowTitle(), QStringLiteral("选择颜色"));
    QCOMPARE(run.dialog->styleSheet(), QStringLiteral("color:#000000"));
    auto *layout = qobject_cast<QVBoxLayout *>(run.dialog->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 2);
    QVERIFY(qobject_cast<ZvColorTabWidget *>(layout->itemAt(0)->widget()));
    QCOMPARE(run.tabs()->styleSheet(), QStringLiteral("background-color:#ffffff"));
    auto *box = qobject_cast<QDialogButtonBox *>(layout->itemAt(1)->widget());
    QVERIFY(box);
    QCOMPARE(box->buttons().size(), 3);
    const QDialogButtonBox::ButtonRole roles[]
        = {QDialogButtonBox::YesRole, QDialogButtonBox::NoRole, QDialogButtonBox::HelpRole};
    const QString texts[] = {QStringLiteral("确定"), QStringLiteral("取消"), QStringLiteral("帮助")};
    for (int i = 0; i < 3; ++i) {
        QPushButton *button = run.buttonOf(texts[i]);
        QVERIFY(button);
        QCOMPARE(box->buttonRole(button), roles[i]);
        QCOMPARE(box->standardButton(button), QDialogButtonBox::NoButton);
        QCOMPARE(button->styleSheet(), QStringLiteral("background-color:#ffffff"));
    }
}

void TestColorDialog::sizeIsFixed()
{
    ColorDialogRun run(ColorKeys{});
    QVERIFY(run.show());
    QCOMPARE(run.dialog->size(), QSize(375, 395));
    run.dialog->resize(800, 600);
    QCOMPARE(run.dialog->size(), QSize(375, 395));
}

void TestColorDialog::dialogIsModalWhileItRunsOnly()
{
    const ColorDialogRun run(ColorKeys{});
    QVERIFY(!run.dialog->isModal());
    bool wasModal = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        wasModal = dialog->isModal();
        dialog->reject();
    });
    run.adapter->doModal();
    QVERIFY(driver.finished());
    QVERIFY(wasModal);
}

void TestColorDialog::adapterHidesTheDialogAndOwnsIt()
{
    QWidget parent;
    {
        const ColorDialogRun run(colorParams({}), nullptr, &parent);
        QVERIFY(run.dialog);
        QVERIFY(!run.adapter->getDlg());
    }
    QVERIFY(!ColorDialogRun::findDialog());

    auto *dying = new QWidget;
    const ColorDialogRun run(colorParams({}), nullptr, dying);
    delete dying;
    QVERIFY(!ColorDialogRun::findDialog());
    QCOMPARE(run.adapter->doModal(), -1);
}

void TestColorDialog::parentIsTheWindowAskedFor_data()
{
    QTest::addColumn<bool>("given");
    QTest::newRow("a window is given") << true;
    QTest::newRow("no window at all") << false;
}

void TestColorDialog::parentIsTheWindowAskedFor()
{
    QFETCH(bool, given);
    QWidget window;
    const ColorDialogRun run(colorParams({}), nullptr, given ? &window : nullptr);
    QCOMPARE(run.dialog->parentWidget(), given ? &window : nullptr);
    QCOMPARE(run.dialog->size(), QSize(375, 395));
}

void TestColorDialog::nullParametersAreAnEmptyTree()
{
    const ColorDialogRun run{ZvJsonPtr()};
    QVERIFY(run.isReady);
    QCOMPARE(run.tabs()->count(), 2);
    ModalDriver driver;
    driver.next(
        [&](QDialog *) { QTest::mouseClick(run.grid(3), Qt::LeftButton, Qt::NoModifier, cellCentre(0, 1, 17)); });
    driver.next([&](QDialog *) { QTest::mouseClick(run.buttonOf(QStringLiteral("确定")), Qt::LeftButton); });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
}

void TestColorDialog::bitsChooseTheTabs_data()
{
    QTest::addColumn<int>("tabs");
    QTest::addColumn<QStringList>("texts");
    const QString index = QStringLiteral("索引颜色");
    const QString trueColor = QStringLiteral("真彩色");
    QTest::newRow("absent") << kMissing << QStringList{index, trueColor};
    QTest::newRow("0") << 0 << QStringList{};
    QTest::newRow("1, index alone") << 1 << QStringList{index};
    QTest::newRow("2, true colour alone") << 2 << QStringList{trueColor};
    QTest::newRow("3, both") << 3 << QStringList{index, trueColor};
    QTest::newRow("7, the default") << 7 << QStringList{index, trueColor};
    QTest::newRow("other bits are ignored") << 0xFC << QStringList{};
    QTest::newRow("other bits beside the first") << 0xFD << QStringList{index};
}

void TestColorDialog::bitsChooseTheTabs()
{
    QFETCH(int, tabs);
    QFETCH(QStringList, texts);
    const ColorDialogRun run(tabs == kMissing ? ColorKeys{} : ColorKeys{{"tabs", tabs}});
    QCOMPARE(run.tabs()->count(), texts.size());
    for (int i = 0; i < texts.size(); ++i)
        QCOMPARE(run.tabs()->tabText(i), texts.at(i));
    QCOMPARE(run.tabs()->currentIndex(), texts.isEmpty() ? -1 : 0);
}

namespace {
typedef void (*FillTree)(const ZvJsonPtr &params);
}
Q_DECLARE_METATYPE(FillTree)

void TestColorDialog::keysOfAnotherKind_data()
{
    QTest::addColumn<FillTree>("fill");
    QTest::addColumn<int>("tabs");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isAccepted");
    const struct
    {
        const char *name;
        FillTree fill;
        int tabs;
        const char *text;
        bool isAccepted;
    } rows[] = {
        {"tabs of 64 bits", [](const ZvJsonPtr &params) { params->SetDataL("tabs", 0x7FFFFFFF00000001); }, 1, "BYBLOCK",
         true},
        {"a method in words is an unknown one", [](const ZvJsonPtr &params) { params->SetDataS("clrMethod", "192"); },
         2, "0,0,0", false},
        {"a colour in words is 0", [](const ZvJsonPtr &params) { params->SetDataS("selectClr", "5"); }, 2, "BYBLOCK",
         true},
        {"a tree for a colour is 0",
         [](const ZvJsonPtr &params) { params->SetDataJ("selectClr", ElementValue::createObject(2)); }, 2, "BYBLOCK",
         true},
        {"an index beyond all is by layer", [](const ZvJsonPtr &params) { params->SetDataI("selectClr", 300); }, 2,
         "BYLAYER", true},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.fill << row.tabs << QString::fromLatin1(row.text) << row.isAccepted;
}

void TestColorDialog::keysOfAnotherKind()
{
    QFETCH(FillTree, fill);
    QFETCH(int, tabs);
    QFETCH(QString, text);
    QFETCH(bool, isAccepted);
    const ZvJsonPtr params = colorParams({});
    fill(params);
    const ColorDialogRun run(params);
    QCOMPARE(run.tabs()->count(), tabs);
    QCOMPARE(run.tabs()->currentIndex(), 0);
    QCOMPARE(run.indexText()->text(), text);
    run.dialog->accept();
    QCOMPARE(run.dialog->result() == QDialog::Accepted, isAccepted);
    QCOMPARE(m_messages->lines().size(), isAccepted ? 0 : 1);
}

void TestColorDialog::methodChoosesTheFirstTab_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("tab");
    QTest::newRow("absent") << kMissing << 0;
    QTest::newRow("192 by layer") << 192 << 0;
    QTest::newRow("193 by block") << 193 << 0;
    QTest::newRow("194 true colour") << 194 << 1;
    QTest::newRow("195 by index") << 195 << 0;
    QTest::newRow("196 by pen") << 196 << 0;
    QTest::newRow("200 none") << 200 << 0;
    QTest::newRow("no code at all") << -5 << 0;
}

void TestColorDialog::methodChoosesTheFirstTab()
{
    QFETCH(int, method);
    QFETCH(int, tab);
    ColorKeys keys{{"tabs", 3}, {"selectClr", 5}};
    if (method != kMissing)
        keys << ColorKey("clrMethod", method);
    const ColorDialogRun run(keys);
    QCOMPARE(run.tabs()->currentIndex(), tab);
}

void TestColorDialog::unknownMethodStillCarriesTheColour()
{
    const ColorDialogRun run({{"clrMethod", 200}});
    run.indexText()->setText(QStringLiteral("1"));
    run.tabs()->setCurrentIndex(1);
    QCOMPARE(run.color(), packed(255, 0, 0));
}

void TestColorDialog::firstTabIsChosenWithoutCarrying()
{
    const ColorDialogRun run({{"clrMethod", 194}, {"selectClr", packed(10, 20, 30)}});
    QCOMPARE(run.method(), 194);
    QCOMPARE(run.color(), packed(10, 20, 30));
    QCOMPARE(run.trueColorText()->text(), QStringLiteral("10,20,30"));
    QVERIFY(m_messages->lines().isEmpty());
}

void TestColorDialog::indexTabGoesToTrueColor_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("color");
    QTest::addColumn<QString>("typed"); // null: nothing typed
    QTest::addColumn<int>("carried");
    QTest::addColumn<QString>("text");
    const QString oddText = QStringLiteral("0,0,7");
    QTest::newRow("by layer turns into 0,0,7") << 192 << 256 << QString() << 0x70000 << oddText;
    QTest::newRow("by block turns into 0,0,7") << 193 << 0 << QString() << 0x70000 << oddText;
    QTest::newRow("red by index") << 195 << 1 << QString() << packed(255, 0, 0) << QStringLiteral("255,0,0");
    QTest::newRow("grey by index") << 195 << 8 << QString() << packed(128, 128, 128) << QStringLiteral("128,128,128");
    QTest::newRow("a number typed") << 195 << 1 << QStringLiteral("5") << packed(0, 0, 255)
                                    << QStringLiteral("0,0,255");
    QTest::newRow("a name typed") << 195 << 1 << QStringLiteral("绿") << packed(0, 255, 0) << QStringLiteral("0,255,0");
    QTest::newRow("0 typed") << 195 << 1 << QStringLiteral("0") << 0x70000 << oddText;
    QTest::newRow("256 typed") << 195 << 1 << QStringLiteral("256") << 0x70000 << oddText;
    QTest::newRow("three parts that are no numbers") << 195 << 1 << QStringLiteral("a,b,c") << 0x70000 << oddText;
    QTest::newRow("an index beyond the palette is black") << 195 << 300 << QString() << 0 << QStringLiteral("0,0,0");
    QTest::newRow("-1 turns into 0,0,7") << 195 << -1 << QString() << 0x70000 << oddText;
}

void TestColorDialog::indexTabGoesToTrueColor()
{
    QFETCH(int, method);
    QFETCH(int, color);
    QFETCH(QString, typed);
    QFETCH(int, carried);
    QFETCH(QString, text);
    ColorDialogRun run({{"clrMethod", method}, {"selectClr", color}});
    QVERIFY(run.show());
    if (!typed.isNull())
        run.indexText()->setText(typed);
    QTest::mouseClick(run.tabs()->tabBar(), Qt::LeftButton, Qt::NoModifier, run.tabs()->tabBar()->tabRect(1).center());
    QCOMPARE(run.tabs()->currentIndex(), 1);
    QCOMPARE(run.color(), carried);
    QCOMPARE(run.trueColorText()->text(), text);
    QVERIFY(m_messages->lines().isEmpty());
}

void TestColorDialog::refusedIndexTextKeepsTheIndexTab()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 3}});
    run.tabs()->setCurrentIndex(1);
    run.tabs()->setCurrentIndex(0);
    run.indexText()->setText(QStringLiteral("257"));
    run.tabs()->setCurrentIndex(1);
    QCOMPARE(m_messages->lines(), QStringList{badIndexText()});
    QCOMPARE(run.tabs()->currentIndex(), 0);
    // the refused text has made room for the true colour tab's colour
    QCOMPARE(run.indexText()->text(), QStringLiteral("0,255,0"));
    QCOMPARE(run.method(), 194);
    QCOMPARE(run.color(), packed(0, 255, 0));
}

void TestColorDialog::trueColorComesBack_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("color");
    QTest::newRow("a colour") << QStringLiteral("10,20,30") << packed(10, 20, 30);
    QTest::newRow("black") << QStringLiteral("0,0,0") << packed(0, 0, 0);
    QTest::newRow("white") << QStringLiteral("255,255,255") << packed(255, 255, 255);
}

void TestColorDialog::trueColorComesBack()
{
    QFETCH(QString, typed);
    QFETCH(int, color);
    const ColorDialogRun run({{"clrMethod", 194}, {"selectClr", packed(1, 2, 3)}});
    run.trueColorText()->setText(typed);
    run.tabs()->setCurrentIndex(0);
    QCOMPARE(run.indexText()->text(), typed);
    QCOMPARE(run.method(), 194);
    QCOMPARE(run.color(), color);
    QVERIFY(m_messages->lines().isEmpty());
}

void TestColorDialog::refusedTrueColorGoesBackWithTheColourBefore()
{
    const ColorDialogRun run({{"clrMethod", 194}, {"selectClr", packed(1, 2, 3)}});
    run.trueColorText()->setText(QStringLiteral("255,255,256"));
    run.tabs()->setCurrentIndex(0);
    QCOMPARE(m_messages->lines(), QStringList{badTrueColorText()});
    QCOMPARE(run.tabs()->currentIndex(), 0);
    QCOMPARE(run.indexText()->text(), QStringLiteral("1,2,3"));
    QCOMPARE(run.color(), packed(1, 2, 3));
}

void TestColorDialog::roundTripTurnsAnIndexIntoTrueColor()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    run.tabs()->setCurrentIndex(1);
    QCOMPARE(run.method(), 195);
    run.tabs()->setCurrentIndex(0);
    QCOMPARE(run.method(), 194);
    QCOMPARE(run.color(), packed(255, 0, 0));
    QCOMPARE(run.indexText()->text(), QStringLiteral("255,0,0"));
}

void TestColorDialog::secondRoundTripLosesTheTrueColor()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    run.tabs()->setCurrentIndex(1);
    run.tabs()->setCurrentIndex(0);
    run.tabs()->setCurrentIndex(1); // the text is taken, but has no index
    QCOMPARE(run.color(), 0x70000);
    QVERIFY(m_messages->lines().isEmpty());
}

void TestColorDialog::otherPositionsCarryNothing()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    for (const int index : {-1, 2, 7})
        run.dialog->slot_currentTabChange(index);
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), 1);
}

void TestColorDialog::oneTabCarriesNothing()
{
    const ColorDialogRun run({{"tabs", 1}, {"clrMethod", 195}, {"selectClr", 1}});
    run.dialog->slot_currentTabChange(0);
    run.dialog->slot_currentTabChange(1);
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), 1);
}

void TestColorDialog::endingsHaveTheirCodes_data()
{
    QTest::addColumn<Ending>("ending");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << kOkButton << 1;
    QTest::newRow("cancel") << kCancelButton << 2;
    QTest::newRow("Enter") << kEnterKey << 1;
    QTest::newRow("Escape") << kEscapeKey << 2;
    QTest::newRow("the window's close button") << kCloseWindow << 2;
    QTest::newRow("double click on the swatch") << kSwatch << 1;
    QTest::newRow("double click on a cell") << kCell << 1;
}

void TestColorDialog::endingsHaveTheirCodes()
{
    QFETCH(Ending, ending);
    QFETCH(int, result);
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        switch (ending) {
        case kOkButton:
            QTest::mouseClick(run.buttonOf(QStringLiteral("确定")), Qt::LeftButton);
            break;
        case kCancelButton:
            QTest::mouseClick(run.buttonOf(QStringLiteral("取消")), Qt::LeftButton);
            break;
        case kEnterKey:
            QTest::keyClick(dialog, Qt::Key_Return);
            break;
        case kEscapeKey:
            QTest::keyClick(dialog, Qt::Key_Escape);
            break;
        case kCloseWindow:
            dialog->close();
            break;
        case kSwatch:
            QTest::mouseDClick(run.indexTab()->findChild<ZvColorLabel *>(), Qt::LeftButton);
            break;
        case kCell:
            QTest::mouseDClick(run.grid(3), Qt::LeftButton, Qt::NoModifier, cellCentre(0, 0, 17));
            break;
        }
    });
    QCOMPARE(run.adapter->doModal(), result);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(run.adapter->getResult(), "result"), result);
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), 1);
    QVERIFY(m_messages->lines().isEmpty());
}

void TestColorDialog::refusedTextKeepsTheDialogOpen_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("message");
    QTest::newRow("index tab") << 195 << badIndexText();
    QTest::newRow("true colour tab") << 194 << badTrueColorText();
}

void TestColorDialog::refusedTextKeepsTheDialogOpen()
{
    QFETCH(int, method);
    QFETCH(QString, message);
    CountingHelper *helper = new CountingHelper;
    const ZvRxObjectPtr reference = ZvRxObjectPtr::adopt(helper);
    const ColorDialogRun run(colorParams({{"clrMethod", method}, {"selectClr", 5}}), reference);
    QLineEdit *text = method == 195 ? run.indexText() : run.trueColorText();
    bool stayedOpen = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        text->setText(QStringLiteral("nonsense"));
        QTest::mouseClick(run.buttonOf(QStringLiteral("确定")), Qt::LeftButton);
        stayedOpen = dialog->isVisible();
    });
    driver.next([&](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QCOMPARE(run.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QVERIFY(stayedOpen);
    QCOMPARE(m_messages->lines(), QStringList{message});
    QCOMPARE(text->text(), QStringLiteral("nonsense"));
    QCOMPARE(run.method(), method);
    QCOMPARE(run.color(), 5);
    QCOMPARE(helper->calls, 0);
}

void TestColorDialog::swatchWithRefusedTextCancels_data()
{
    refusedTextKeepsTheDialogOpen_data();
}

void TestColorDialog::swatchWithRefusedTextCancels()
{
    QFETCH(int, method);
    QFETCH(QString, message);
    const ColorDialogRun run({{"clrMethod", method}, {"selectClr", 5}});
    ModalDriver driver;
    driver.next([&](QDialog *) {
        (method == 195 ? run.indexText() : run.trueColorText())->setText(QStringLiteral("nonsense"));
        QWidget *tab = run.tabs()->currentWidget();
        QTest::mouseDClick(tab->findChild<ZvColorLabel *>(), Qt::LeftButton);
    });
    QCOMPARE(run.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(m_messages->lines(), QStringList{message});
}

void TestColorDialog::swatchOfTheTrueColorTabAccepts()
{
    const ColorDialogRun run({{"clrMethod", 194}, {"selectClr", packed(1, 2, 3)}});
    ModalDriver driver;
    driver.next([&](QDialog *) {
        run.trueColorText()->setText(QStringLiteral("9,8,7"));
        QTest::mouseDClick(run.trueColorTab()->findChild<ZvColorLabel *>(), Qt::LeftButton);
    });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(run.method(), 194);
    QCOMPARE(run.color(), packed(9, 8, 7));
}

void TestColorDialog::trueColorTabWritesItsText()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    ModalDriver driver;
    driver.next([&](QDialog *) { run.tabs()->setCurrentIndex(1); });
    driver.next([&](QDialog *) {
        run.trueColorText()->selectAll();
        QTest::keyClicks(run.trueColorText(), QStringLiteral("12,34,56"));
        QTest::mouseClick(run.buttonOf(QStringLiteral("确定")), Qt::LeftButton);
    });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(run.method(), 194);
    QCOMPARE(run.color(), packed(12, 34, 56));
}

void TestColorDialog::cancelLeavesWhatWasClicked()
{
    const ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    ModalDriver driver;
    driver.next(
        [&](QDialog *) { QTest::mouseClick(run.grid(3), Qt::LeftButton, Qt::NoModifier, cellCentre(0, 4, 17)); });
    driver.next([&](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QCOMPARE(run.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), 5);
}

void TestColorDialog::cancelValidatesNothing_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("index tab") << 195;
    QTest::newRow("true colour tab") << 194;
}

void TestColorDialog::cancelValidatesNothing()
{
    QFETCH(int, method);
    const ColorDialogRun run({{"clrMethod", method}, {"selectClr", 5}});
    ModalDriver driver;
    driver.next([&](QDialog *) {
        (method == 195 ? run.indexText() : run.trueColorText())->setText(QStringLiteral("nonsense"));
        QTest::mouseClick(run.buttonOf(QStringLiteral("取消")), Qt::LeftButton);
    });
    QCOMPARE(run.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(m_messages->lines(), QStringList());
    QCOMPARE(run.method(), method);
    QCOMPARE(run.color(), 5);
}

void TestColorDialog::lonelyTrueColorTabIsAcceptedWithoutAnAnswer()
{
    const ColorDialogRun run({{"tabs", 2}, {"clrMethod", 194}, {"selectClr", packed(1, 2, 3)}});
    ModalDriver driver;
    driver.next([&](QDialog *) {
        run.trueColorText()->setText(QStringLiteral("9,9,9"));
        QTest::mouseClick(run.buttonOf(QStringLiteral("确定")), Qt::LeftButton);
    });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(run.color(), packed(1, 2, 3));
}

void TestColorDialog::enterInATextEntryAccepts()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    ModalDriver driver;
    driver.next([&](QDialog *) {
        run.indexText()->setFocus();
        run.indexText()->selectAll();
        QTest::keyClicks(run.indexText(), QStringLiteral("42"));
        QTest::keyClick(run.indexText(), Qt::Key_Return);
    });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), 42);
}

void TestColorDialog::helperIsToldOnAcceptOnly()
{
    for (const bool accepts : {true, false}) {
        auto *helper = new CountingHelper;
        const ZvRxObjectPtr reference = ZvRxObjectPtr::adopt(helper);
        const ColorDialogRun run(colorParams({{"clrMethod", 195}, {"selectClr", 1}}), reference);
        ModalDriver driver;
        driver.next([&](QDialog *dialog) { QTest::keyClick(dialog, accepts ? Qt::Key_Return : Qt::Key_Escape); });
        QCOMPARE(run.adapter->doModal(), accepts ? 1 : 2);
        QVERIFY(driver.finished());
        QCOMPARE(helper->calls, accepts ? 1 : 0);
        QCOMPARE(helper->lastParams.get(), accepts ? run.params.get() : nullptr);
        helper->lastParams = nullptr;
    }
}

void TestColorDialog::helperIsToldBeforeTheDialogCloses_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("color");
    QTest::newRow("index tab") << 0 << "42" << 195 << 42;
    QTest::newRow("true colour tab") << 1 << "9,8,7" << 194 << packed(9, 8, 7);
}

void TestColorDialog::helperIsToldBeforeTheDialogCloses()
{
    QFETCH(int, tab);
    QFETCH(QString, typed);
    QFETCH(int, method);
    QFETCH(int, color);
    auto *helper = new CountingHelper;
    const ZvRxObjectPtr reference = ZvRxObjectPtr::adopt(helper);
    const ColorDialogRun run(colorParams({{"clrMethod", 195}, {"selectClr", 1}}), reference);
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        run.tabs()->setCurrentIndex(tab);
        (tab == 0 ? run.indexText() : run.trueColorText())->setText(typed);
        dialog->accept();
    });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(helper->calls, 1);
    QCOMPARE(helper->method, method);
    QCOMPARE(helper->color, color);
    QVERIFY(helper->sawOpenDialog);
    helper->lastParams = nullptr;
}

void TestColorDialog::helperIsHeldByTheAdapterAlone()
{
    auto *helper = new CountingHelper;
    const ZvRxObjectPtr reference = ZvRxObjectPtr::adopt(helper);
    {
        const ColorDialogRun run(colorParams({{"clrMethod", 195}, {"selectClr", 1}}), reference);
        QCOMPARE(zvrxNumRefs(helper), 2);
        run.tabs()->setCurrentIndex(1); // which hands it to the tab once more
        QCOMPARE(zvrxNumRefs(helper), 2);
    }
    QCOMPARE(zvrxNumRefs(helper), 1);
}

void TestColorDialog::helperOfAnotherClassIsNotCalled()
{
    const ZvRxObjectPtr other = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvRxObject>);
    const ColorDialogRun run(colorParams({{"clrMethod", 195}, {"selectClr", 1}}), other);
    ModalDriver driver;
    driver.next([&](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    QCOMPARE(run.adapter->doModal(), 1);
    QVERIFY(driver.finished());
}

void TestColorDialog::helpButtonShowsTheHostsHelp()
{
    auto *help = new CountingHelp;
    const ZvRxObjectPtr reference = ZvRxObjectPtr::adopt(help);
    zv_arbitDict_regservice(helpKey(), reference);
    const ColorDialogRun run(ColorKeys{});
    bool stayedOpen = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QTest::mouseClick(run.buttonOf(QStringLiteral("帮助")), Qt::LeftButton);
        stayedOpen = dialog->isVisible();
        dialog->reject();
    });
    run.adapter->doModal();
    zv_arbitDict_clearservice(helpKey());
    QVERIFY(driver.finished());
    QCOMPARE(help->calls, 1);
    QVERIFY(stayedOpen);
}

void TestColorDialog::helpButtonWithoutHelpDoesNothing()
{
    ColorDialogRun run(ColorKeys{});
    QVERIFY(run.show());
    QTest::mouseClick(run.buttonOf(QStringLiteral("帮助")), Qt::LeftButton);
    QVERIFY(run.dialog->isVisible());
}

void TestColorDialog::helpOfAForeignClassThrows()
{
    zv_arbitDict_regservice(helpKey(), Stranger::make());
    const ColorDialogRun run(ColorKeys{});
    QVERIFY_EXCEPTION_THROWN(run.dialog->slot_help_button_clicked(), ZvError_NotThatKindOfClass);
    zv_arbitDict_clearservice(helpKey());
}

ZEVA_TEST_MAIN(TestColorDialog)
#include "tst_colordialog.moc"
