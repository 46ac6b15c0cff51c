// SPDX-License-Identifier: MIT
#include "dialogbag.h"
#include "modaldriver.h"
#include "modulesession.h"
#include "zevatest.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

using namespace BoxButtons;

namespace {

enum ContentFlag { kTexts = 1, kButtons = 2, kCommands = 4, kCheck = 8 };
constexpr int kCallersButtons = 64;

ZvJsonPtr makeParams(int contentFlag, int flag = 0)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataI("contentFlag", contentFlag);
    params->SetDataI("flag", flag);
    return params;
}

struct Command
{
    int id;
    QString caption;
};

void setCommands(const ZvJsonPtr &params, const QVector<Command> &commands)
{
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    for (const Command &command : commands) {
        const ZvJsonPtr object = ElementValue::createObject(IElementValueBase::kObject);
        object->SetDataI("id", command.id);
        object->SetDataS("caption", command.caption.toUtf8().constData());
        array->append(object);
    }
    params->SetDataJ("selBtnText", array);
}

/// 1 and 0, or kMissing.
int boolOf(const ZvJsonPtr &params, const char *key)
{
    bool value = false;
    return params->GetDataB(key, value) ? int(value) : kMissing;
}

/// A task dialog of the service with its parameters.
class Task
{
public:
    explicit Task(const ZvJsonPtr &params, QWidget *parent = nullptr)
        : adapter(ModuleSession::createDialog(L"TaskDialog", parent)), dialog(ModuleSession::dialogOf(adapter)),
          isReady(adapter->onInit(params, nullptr))
    {
    }
    void show()
    {
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
    }

    QWidget *part(int index) const
    {
        QLayoutItem *item = dialog->layout()->itemAt(index);
        return item ? item->widget() : nullptr;
    }
    QWidget *topBlock() const { return part(0); }
    /// Null where there is none.
    QWidget *footer() const { return part(1); }
    /// Right of the icon: the texts, then the commands.
    QLayout *contentLayout() const
    {
        QLayout *row = topBlock()->layout();
        return row->itemAt(row->count() - 1)->widget()->layout();
    }
    QWidget *texts() const { return contentLayout()->itemAt(0)->widget(); }
    QList<QPushButton *> commands() const { return topBlock()->findChildren<QPushButton *>(); }
    QList<QPushButton *> buttons() const
    {
        return footer() ? footer()->findChildren<QPushButton *>() : QList<QPushButton *>();
    }
    QCheckBox *check() const { return dialog->findChild<QCheckBox *>(); }
    QLabel *icon() const
    {
        auto *label = qobject_cast<QLabel *>(topBlock()->layout()->itemAt(0)->widget());
        return label && !label->pixmap(Qt::ReturnByValue).isNull() ? label : nullptr;
    }
    QColor iconColor() const
    {
        return icon() ? icon()->pixmap(Qt::ReturnByValue).toImage().pixelColor(4, 4) : QColor();
    }
    int groupCount() const { return dialog->findChildren<QButtonGroup *>().size(); }

    ZvUiDialogBasePtr adapter;
    QDialog *dialog;
    bool isReady;
};

void checkTight(const QWidget *panel)
{
    QCOMPARE(panel->layout()->spacing(), 1);
    QCOMPARE(panel->layout()->contentsMargins(), QMargins(1, 1, 1, 1));
}

struct Standard
{
    int bit;
    QString text;
    int id;
};

/// From left to right.
QVector<Standard> standards()
{
    return {{1, kOk, 1}, {2, kYes, 6}, {4, kNo, 7}, {16, kRetry, 4}, {8, kCancel, 2}, {32, kClose, 8}};
}

/// Whether it was given the property: any button has it inside a dialog, only such a one outside as well. Takes the
/// button out of its dialog.
bool wasMadeAutoDefault(QPushButton *button)
{
    button->setParent(nullptr);
    const std::unique_ptr<QPushButton> taken(button);
    return taken->autoDefault();
}

QStringList kept; // what a link asked for

} // namespace

class LinkTaker : public QObject
{
    Q_OBJECT
public Q_SLOTS:
    void take(const QUrl &url) { kept << url.toString(); }
};

class TestQtTaskDialog : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    // how it is built
    void emptyParametersShowNothing();
    void titleIsTheWindowTitle();
    void closeIsTheAnswerBeforeAnyOther();
    void contentBitsDecideWhatIsShown_data();
    void contentBitsDecideWhatIsShown();
    void panelsAreTight();

    // the icon
    void typeDecidesTheIcon_data();
    void typeDecidesTheIcon();
    void mainIconIsTheCallersFile_data();
    void mainIconIsTheCallersFile();
    void iconIs32By32AndKeepsItsProportions();
    void missingIconFileLeavesItsSpaceOut();
    void windowIconIsTheFileOnDemand_data();
    void windowIconIsTheFileOnDemand();

    // the texts
    void textsStandBelowOneAnother_data();
    void textsStandBelowOneAnother();
    void textsAreWrapped();
    void linksOpenOnDemand_data();
    void linksOpenOnDemand();

    // the command buttons
    void commandsStandInOrder();
    void commandsAreWideAndBlue();
    void defaultCommandIsTheOneNamed_data();
    void defaultCommandIsTheOneNamed();
    void commandAnswersItsId_data();
    void commandAnswersItsId();
    void enterPressesTheDefaultCommand();
    void missingOrEmptyCommandsStillHaveAGroup_data();
    void missingOrEmptyCommandsStillHaveAGroup();
    void elementsWithoutMembersCountAsEmpty();

    // the check box
    void checkAnswersItsFirstState_data();
    void checkAnswersItsFirstState();
    void toggleIsWrittenAndKeepsTheDialogOpen();

    // the footer buttons
    void bitsChooseTheButtons_data();
    void bitsChooseTheButtons();
    void customButtons_data();
    void customButtons();
    void maskDisablesStandardButtons_data();
    void maskDisablesStandardButtons();
    void maskIsComparedWithTheIndexOfCustomButtons_data();
    void maskIsComparedWithTheIndexOfCustomButtons();
    void maskOneDisablesTheLoneOkButton();
    void buttonsStandAtTheRight();
    void focusBitMakesTheAutoDefault_data();
    void focusBitMakesTheAutoDefault();
    void pressAnswersTheId_data();
    void pressAnswersTheId();
    void mnemonicPressesTheButton();
    void foreignIdIsReplacedByCancel_data();
    void foreignIdIsReplacedByCancel();

    // leaving without a button
    void rejectAnswersTheLastButton_data();
    void rejectAnswersTheLastButton();

    void sizeIsThatOfTheContent();

private:
    QScopedPointer<ModuleSession> m_session;
    QScopedPointer<DialogPictures> m_pictures;
};

void TestQtTaskDialog::initTestCase()
{
    m_pictures.reset(new DialogPictures);
    QVERIFY(m_pictures->isReady);
}

void TestQtTaskDialog::cleanupTestCase()
{
    m_pictures.reset();
}

void TestQtTaskDialog::init()
{
    ZevaTest::init();
    m_session.reset(new ModuleSession);
}

void TestQtTaskDialog::cleanup()
{
    m_session.reset();
    ZevaTest::cleanup();
}

void TestQtTaskDialog::emptyParametersShowNothing()
{
    const Task task(ElementValue::createObject(IElementValueBase::kObject));
    QVERIFY(task.isReady);
    QVERIFY(task.dialog->isModal());
    QVERIFY(qobject_cast<QVBoxLayout *>(task.dialog->layout()));
    QCOMPARE(task.dialog->layout()->count(), 1);
    QCOMPARE(task.dialog->windowTitle(), QString());
    QVERIFY(task.dialog->findChildren<QLabel *>().isEmpty());
    QVERIFY(task.dialog->findChildren<QAbstractButton *>().isEmpty());
    QCOMPARE(task.groupCount(), 0);
}

void TestQtTaskDialog::titleIsTheWindowTitle()
{
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataSW("title", ZvString(L"恢复图形"));
    QCOMPARE(Task(params).dialog->windowTitle(), QStringLiteral("恢复图形"));
}

void TestQtTaskDialog::closeIsTheAnswerBeforeAnyOther()
{
    const ZvJsonPtr params = makeParams(kTexts | kButtons, 1);
    params->SetDataI("ControlBtn", 77);
    const Task task(params);
    QCOMPARE(intOf(params, "ControlBtn"), 8);
    QVERIFY(!params->hasKey("selectedCheck"));
}

void TestQtTaskDialog::contentBitsDecideWhatIsShown_data()
{
    QTest::addColumn<int>("contentFlag");
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("hasTexts");
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("commands");
    QTest::addColumn<bool>("hasCheck");
    QTest::addColumn<bool>("hasFooter");
    QTest::newRow("0") << 0 << 3 << false << 0 << 0 << false << false;
    QTest::newRow("1: texts") << 1 << 3 << true << 0 << 0 << false << false;
    QTest::newRow("2: footer buttons") << 2 << 3 << false << 2 << 0 << false << true;
    QTest::newRow("2 with flag 0: no footer, no button") << 2 << 0 << false << 0 << 0 << false << false;
    QTest::newRow("4: commands") << 4 << 3 << false << 0 << 2 << false << false;
    QTest::newRow("8: check") << 8 << 3 << false << 0 << 0 << true << true;
    QTest::newRow("10 with flag 0: check alone") << 10 << 0 << false << 0 << 0 << true << true;
    QTest::newRow("15: all") << 15 << 3 << true << 2 << 2 << true << true;
    QTest::newRow("0xF0: other bits have no effect") << 0xF0 << 3 << false << 0 << 0 << false << false;
}

void TestQtTaskDialog::contentBitsDecideWhatIsShown()
{
    QFETCH(int, contentFlag);
    QFETCH(int, flag);
    QFETCH(bool, hasTexts);
    QFETCH(int, buttons);
    QFETCH(int, commands);
    QFETCH(bool, hasCheck);
    QFETCH(bool, hasFooter);
    const ZvJsonPtr params = makeParams(contentFlag, flag);
    params->SetDataSW("msg", ZvString(L"消息"));
    params->SetDataS("content", "内容");
    params->SetDataS("expandedInformation", "详细");
    params->SetDataS("checkboxText", "不再显示");
    setCommands(params, {{10, QStringLiteral("甲")}, {11, QStringLiteral("乙")}});
    const Task task(params);
    QCOMPARE(!task.dialog->findChildren<QLabel *>().isEmpty(), hasTexts);
    QCOMPARE(task.buttons().size(), buttons);
    QCOMPARE(task.commands().size(), commands);
    QCOMPARE(task.check() != nullptr, hasCheck);
    QCOMPARE(task.footer() != nullptr, hasFooter);
    QCOMPARE(task.groupCount(), int(commands > 0) + int(buttons > 0));
    QVERIFY(!hasCheck || task.check()->text() == QStringLiteral("不再显示"));
}

void TestQtTaskDialog::panelsAreTight()
{
    const ZvJsonPtr params = makeParams(kTexts | kButtons | kCommands | kCheck, 1);
    setCommands(params, {{1, QStringLiteral("甲")}});
    const Task task(params);
    QVERIFY(qobject_cast<QHBoxLayout *>(task.topBlock()->layout()));
    QVERIFY(qobject_cast<QVBoxLayout *>(task.contentLayout()));
    QVERIFY(qobject_cast<QHBoxLayout *>(task.texts()->layout()));
    checkTight(task.texts());
    QVERIFY(qobject_cast<QVBoxLayout *>(task.texts()->layout()->itemAt(0)->widget()->layout()));
    checkTight(task.texts()->layout()->itemAt(0)->widget());
    QVERIFY(qobject_cast<QVBoxLayout *>(task.commands().first()->parentWidget()->layout()));
    checkTight(task.commands().first()->parentWidget());
    QVERIFY(qobject_cast<QVBoxLayout *>(task.footer()->layout()));
    checkTight(task.footer());
    QCOMPARE(task.footer()->layout()->count(), 1);
    checkTight(task.check()->parentWidget());
    checkTight(task.buttons().first()->parentWidget());
    // check box above the row of buttons
    QLayout *column = task.check()->parentWidget()->layout();
    QCOMPARE(column->itemAt(0)->widget(), task.check());
    QCOMPARE(column->itemAt(0)->alignment(), Qt::Alignment(Qt::AlignLeft));
    QCOMPARE(column->itemAt(1)->widget(), task.buttons().first()->parentWidget());
    QCOMPARE(column->itemAt(1)->alignment(), Qt::Alignment());
}

void TestQtTaskDialog::typeDecidesTheIcon_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QColor>("color"); // invalid: no icon
    QTest::newRow("32 question") << 32 << DialogPictures::question();
    QTest::newRow("48 information") << 48 << DialogPictures::information();
    QTest::newRow("64 warning") << 64 << DialogPictures::warning();
    QTest::newRow("80 error") << 80 << DialogPictures::error();
    QTest::newRow("0 none") << 0 << QColor();
    QTest::newRow("33 none") << 33 << QColor();
    QTest::newRow("0x130 none") << 0x130 << QColor();
}

void TestQtTaskDialog::typeDecidesTheIcon()
{
    QFETCH(int, type);
    QFETCH(QColor, color);
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataI("dlgtype", type);
    QCOMPARE(Task(params).iconColor(), color);
}

void TestQtTaskDialog::mainIconIsTheCallersFile_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QColor>("color");
    QTest::newRow("type 0: the caller's") << 0 << true << QColor(1, 2, 3);
    QTest::newRow("type 5: the caller's") << 5 << true << QColor(1, 2, 3);
    QTest::newRow("type 32: the type's, the key is ignored") << 32 << true << DialogPictures::question();
    QTest::newRow("type 0 and no such file") << 0 << false << QColor();
}

void TestQtTaskDialog::mainIconIsTheCallersFile()
{
    QFETCH(int, type);
    QFETCH(bool, exists);
    QFETCH(QColor, color);
    QVERIFY(m_pictures->draw("own.png", QColor(1, 2, 3)));
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataI("dlgtype", type);
    params->SetDataS("mainicon", m_pictures->path(exists ? "own.png" : "absent.png").toUtf8().constData());
    QCOMPARE(Task(params).iconColor(), color);
}

void TestQtTaskDialog::iconIs32By32AndKeepsItsProportions()
{
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataI("dlgtype", 64);
    Task task(params);
    task.show();
    QVERIFY(task.icon());
    QCOMPARE(task.icon()->minimumSize(), QSize(32, 32));
    QCOMPARE(task.icon()->maximumSize(), QSize(32, 32));
    QCOMPARE(task.icon()->size(), QSize(32, 32));
    QVERIFY(task.icon()->hasScaledContents());
    QCOMPARE(task.icon()->pixmap(Qt::ReturnByValue).size(), QSize(32, 16)); // the file is twice as wide as high
}

void TestQtTaskDialog::missingIconFileLeavesItsSpaceOut()
{
    QVERIFY(QFile::remove(m_pictures->path("error.png")));
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataI("dlgtype", 80);
    const Task task(params);
    QVERIFY(m_pictures->draw("error.png", DialogPictures::error()));
    QVERIFY(task.isReady);
    QVERIFY(!task.icon());
    QCOMPARE(task.topBlock()->layout()->count(), 1);
}

void TestQtTaskDialog::windowIconIsTheFileOnDemand_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("mainIcon");
    QTest::addColumn<QColor>("color"); // invalid: no icon is set
    const QColor none;
    QTest::newRow("no options") << 0 << 48 << QString() << none;
    QTest::newRow("links only") << 1 << 48 << QString() << none;
    QTest::newRow("window icon") << 2 << 48 << QString() << DialogPictures::information();
    QTest::newRow("both") << 3 << 48 << QString() << DialogPictures::information();
    QTest::newRow("window icon without a file") << 2 << 0 << QString() << none;
    QTest::newRow("the caller's file") << 2 << 0 << m_pictures->path("error.png") << DialogPictures::error();
    QTest::newRow("the caller's file is missing") << 2 << 0 << m_pictures->path("absent.png") << none;
}

void TestQtTaskDialog::windowIconIsTheFileOnDemand()
{
    QFETCH(int, options);
    QFETCH(int, type);
    QFETCH(QString, mainIcon);
    QFETCH(QColor, color);
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataI("options", options);
    params->SetDataI("dlgtype", type);
    params->SetDataS("mainicon", mainIcon.toUtf8().constData());
    const Task task(params);
    QCOMPARE(task.dialog->testAttribute(Qt::WA_SetWindowIcon), color.isValid());
    if (color.isValid())
        QCOMPARE(task.dialog->windowIcon().pixmap(16, 16).toImage().pixelColor(8, 4), color);
}

void TestQtTaskDialog::textsStandBelowOneAnother_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("expanded");
    QTest::addColumn<QStringList>("texts"); // an empty one is the gap
    const QString message = QStringLiteral("消息");
    const QString content = QStringLiteral("内容");
    const QString expanded = QStringLiteral("详细");
    QTest::newRow("message") << QString() << QString() << QStringList{message};
    QTest::newRow("message and content") << content << QString() << QStringList{message, QString(), content};
    QTest::newRow("message and expanded information") << QString() << expanded << QStringList{message, expanded};
    QTest::newRow("all three") << content << expanded << QStringList{message, QString(), content, expanded};
}

void TestQtTaskDialog::textsStandBelowOneAnother()
{
    QFETCH(QString, content);
    QFETCH(QString, expanded);
    QFETCH(QStringList, texts);
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataSW("msg", ZvString(L"消息"));
    params->SetDataS("content", content.toUtf8().constData());
    params->SetDataS("expandedInformation", expanded.toUtf8().constData());
    Task task(params);
    task.show();
    const QLayout *column = task.texts()->layout()->itemAt(0)->widget()->layout();
    QStringList shown;
    int bottom = -1;
    for (int i = 0; i < column->count(); ++i) {
        const auto *label = qobject_cast<QLabel *>(column->itemAt(i)->widget());
        QVERIFY(label);
        QVERIFY(label->y() > bottom);
        bottom = label->geometry().bottom();
        shown << label->text();
    }
    QCOMPARE(shown, texts);
}

void TestQtTaskDialog::textsAreWrapped()
{
    const ZvJsonPtr params = makeParams(kTexts);
    const QByteArray sentence = QByteArray("some words of a long message ").repeated(30);
    params->SetDataS("msg", sentence.constData());
    params->SetDataS("content", sentence.constData());
    params->SetDataS("expandedInformation", sentence.constData());
    Task task(params);
    task.show();
    for (const QLabel *label : task.dialog->findChildren<QLabel *>()) {
        QCOMPARE(label->wordWrap(), !label->text().isEmpty());
        QVERIFY(label->width() < label->fontMetrics().horizontalAdvance(QString::fromLatin1(sentence)));
    }
}

void TestQtTaskDialog::linksOpenOnDemand_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<bool>("opens");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("2") << 2 << false;
    QTest::newRow("3") << 3 << true;
}

void TestQtTaskDialog::linksOpenOnDemand()
{
    QFETCH(int, options);
    QFETCH(bool, opens);
    LinkTaker taker;
    kept.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("drawing"), &taker, "take");
    const ZvJsonPtr params = makeParams(kTexts);
    params->SetDataI("options", options);
    params->SetDataS("msg", "<a href='drawing:0'>x</a>");
    params->SetDataS("content", "<a href='drawing:1'>x</a>");
    params->SetDataS("expandedInformation", "<a href='drawing:2'>x</a>");
    Task task(params);
    task.show();
    for (QLabel *label : task.dialog->findChildren<QLabel *>()) {
        label->setTextInteractionFlags(label->textInteractionFlags() | Qt::LinksAccessibleByKeyboard);
        label->setFocus();
        QTest::keyClick(label, Qt::Key_Tab);
        QTest::keyClick(label, Qt::Key_Return);
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("drawing"));
    const QStringList links = {QStringLiteral("drawing:1"), QStringLiteral("drawing:2")};
    QCOMPARE(kept, opens ? links : QStringList());
}

void TestQtTaskDialog::commandsStandInOrder()
{
    const ZvJsonPtr params = makeParams(kCommands);
    setCommands(params, {{30, QStringLiteral("丙")}, {10, QStringLiteral("甲")}, {20, QStringLiteral("乙")}});
    Task task(params);
    task.show();
    QCOMPARE(textsOf(task.commands()), QStringList({QStringLiteral("丙"), QStringLiteral("甲"), QStringLiteral("乙")}));
    for (int i = 1; i < 3; ++i)
        QVERIFY(task.commands().at(i)->y() > task.commands().at(i - 1)->y());
    // below the texts
    QCOMPARE(task.contentLayout()->itemAt(1)->widget(), task.commands().first()->parentWidget());
}

void TestQtTaskDialog::commandsAreWideAndBlue()
{
    const ZvJsonPtr params = makeParams(kCommands);
    setCommands(params, {{1, QStringLiteral("甲")}});
    Task task(params);
    task.show();
    const QPushButton *button = task.commands().first();
    QCOMPARE(button->minimumWidth(), 417);
    QVERIFY(button->width() >= 417);
    QCOMPARE(button->styleSheet(), QStringLiteral("QPushButton {color:rgb(0, 116, 216);}"));
    QCOMPARE(button->palette().color(QPalette::ButtonText), QColor(0, 116, 216));
    const QLayout *column = button->parentWidget()->layout();
    QCOMPARE(column->itemAt(0)->alignment(), Qt::Alignment());
}

void TestQtTaskDialog::defaultCommandIsTheOneNamed_data()
{
    QTest::addColumn<int>("defaultId"); // kMissing: the key is missing
    QTest::addColumn<QList<bool>>("isDefault");
    QTest::newRow("second") << 20 << QList<bool>{false, true, false};
    QTest::newRow("none has the id") << 99 << QList<bool>{false, false, false};
    QTest::newRow("missing means 0") << kMissing << QList<bool>{false, false, true};
}

void TestQtTaskDialog::defaultCommandIsTheOneNamed()
{
    QFETCH(int, defaultId);
    QFETCH(QList<bool>, isDefault);
    const ZvJsonPtr params = makeParams(kCommands);
    setCommands(params, {{10, QStringLiteral("甲")}, {20, QStringLiteral("乙")}, {0, QStringLiteral("丙")}});
    if (defaultId != kMissing)
        params->SetDataI("defaultBtnId", defaultId);
    const Task task(params);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(task.commands().at(i)->isDefault(), isDefault.at(i));
        QCOMPARE(task.commands().at(i)->autoDefault(), isDefault.at(i));
    }
}

void TestQtTaskDialog::commandAnswersItsId_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("id");
    QTest::newRow("first") << 0 << 10;
    QTest::newRow("a large id") << 1 << 100000;
    QTest::newRow("0") << 2 << 0;
}

void TestQtTaskDialog::commandAnswersItsId()
{
    QFETCH(int, position);
    QFETCH(int, id);
    const ZvJsonPtr params = makeParams(kTexts | kButtons | kCommands, 1 | 8);
    setCommands(params, {{10, QStringLiteral("甲")}, {100000, QStringLiteral("乙")}, {0, QStringLiteral("丙")}});
    const Task task(params);
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QStringLiteral("m_pGroupSelectors =  %1").arg(id)));
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(task.commands().at(position), Qt::LeftButton); });
    QCOMPARE(task.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "ControlBtn"), id);
}

void TestQtTaskDialog::enterPressesTheDefaultCommand()
{
    const ZvJsonPtr params = makeParams(kTexts | kCommands);
    setCommands(params, {{10, QStringLiteral("甲")}, {20, QStringLiteral("乙")}});
    params->SetDataI("defaultBtnId", 20);
    const Task task(params);
    QTest::ignoreMessage(QtDebugMsg, "m_pGroupSelectors =  20");
    ModalDriver driver;
    driver.next([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    QCOMPARE(task.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "ControlBtn"), 20);
}

void TestQtTaskDialog::missingOrEmptyCommandsStillHaveAGroup_data()
{
    QTest::addColumn<bool>("isMissing");
    QTest::newRow("missing") << true;
    QTest::newRow("empty") << false;
}

void TestQtTaskDialog::missingOrEmptyCommandsStillHaveAGroup()
{
    QFETCH(bool, isMissing);
    const ZvJsonPtr params = makeParams(kCommands);
    if (!isMissing)
        setCommands(params, {});
    const Task task(params);
    QCOMPARE(task.groupCount(), 1);
    QVERIFY(task.commands().isEmpty());
    QCOMPARE(task.contentLayout()->count(), 2);
}

void TestQtTaskDialog::elementsWithoutMembersCountAsEmpty()
{
    const ZvJsonPtr params = makeParams(kCommands);
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    array->append(ElementValue::createObject(IElementValueBase::kObject));
    array->append(ZvJsonPtr());
    array->append(ElementValue::createString("not an object"));
    params->SetDataJ("selBtnText", array);
    const Task task(params);
    QCOMPARE(textsOf(task.commands()), QStringList({QString(), QString(), QString()}));
    QTest::ignoreMessage(QtDebugMsg, "m_pGroupSelectors =  0");
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(task.commands().at(1), Qt::LeftButton); });
    QCOMPARE(task.adapter->doModal(), 1);
    QCOMPARE(intOf(params, "ControlBtn"), 0);
}

void TestQtTaskDialog::checkAnswersItsFirstState_data()
{
    QTest::addColumn<int>("checked"); // kMissing: the key is missing
    QTest::addColumn<int>("answer");
    QTest::newRow("true, unchanged") << 1 << 1;
    QTest::newRow("false, unchanged") << 0 << 0;
    QTest::newRow("missing") << kMissing << 0;
}

void TestQtTaskDialog::checkAnswersItsFirstState()
{
    QFETCH(int, checked);
    QFETCH(int, answer);
    const ZvJsonPtr params = makeParams(kCheck);
    if (checked != kMissing)
        params->SetDataB("checkboxChecked", checked == 1);
    const Task task(params);
    QCOMPARE(task.check()->isChecked(), answer == 1);
    QCOMPARE(boolOf(params, "selectedCheck"), answer);
    ModalDriver driver;
    driver.next([](QDialog *dialog) { dialog->close(); });
    QCOMPARE(task.adapter->doModal(), 2);
    QCOMPARE(boolOf(params, "selectedCheck"), answer);
}

void TestQtTaskDialog::toggleIsWrittenAndKeepsTheDialogOpen()
{
    const ZvJsonPtr params = makeParams(kCheck | kButtons, 1);
    params->SetDataS("checkboxText", "不再显示此消息");
    const Task task(params);
    QVector<int> answers;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        for (int i = 0; i < 3; ++i) {
            QTest::mouseClick(task.check(), Qt::LeftButton, {}, QPoint(6, task.check()->height() / 2));
            answers << boolOf(params, "selectedCheck");
        }
        task.check()->setTristate(true);
        task.check()->setCheckState(Qt::PartiallyChecked); // only fully checked counts
        answers << boolOf(params, "selectedCheck") << int(dialog->isVisible());
        QTest::mouseClick(task.buttons().first(), Qt::LeftButton);
    });
    QCOMPARE(task.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(answers, QVector<int>({1, 0, 1, 0, 1}));
}

void TestQtTaskDialog::bitsChooseTheButtons_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QStringList>("texts");
    for (const Standard &button : standards())
        QTest::addRow("%d alone", button.bit) << button.bit << QStringList{button.text};
    QTest::newRow("24: retry, then cancel") << 24 << QStringList{kRetry, kCancel};
    QTest::newRow("63: all") << 63 << QStringList{kOk, kYes, kNo, kRetry, kCancel, kClose};
    QTest::newRow("38") << 38 << QStringList{kYes, kNo, kClose};
    QTest::newRow("65: 64 beside others is no caller's set") << 65 << QStringList{kOk};
    QTest::newRow("128: no known bit leaves the row empty") << 128 << QStringList();
}

void TestQtTaskDialog::bitsChooseTheButtons()
{
    QFETCH(int, flag);
    QFETCH(QStringList, texts);
    const ZvJsonPtr params = makeParams(kButtons, flag);
    setTexts(params, "btnText", {QStringLiteral("甲")});
    Task task(params);
    QVERIFY(task.footer());
    QCOMPARE(textsOf(task.buttons()), texts);
    task.show();
    for (int i = 1; i < texts.size(); ++i)
        QVERIFY(task.buttons().at(i)->x() > task.buttons().at(i - 1)->x());
}

void TestQtTaskDialog::customButtons_data()
{
    QTest::addColumn<QStringList>("btnText");
    QTest::addColumn<QStringList>("texts");
    const QStringList three = {QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙")};
    QTest::newRow("three") << three << three;
    QTest::newRow("one") << QStringList(three.first()) << QStringList(three.first());
    QTest::newRow("none gives OK") << QStringList() << QStringList{kOk};
}

void TestQtTaskDialog::customButtons()
{
    QFETCH(QStringList, btnText);
    QFETCH(QStringList, texts);
    const ZvJsonPtr params = makeParams(kButtons, kCallersButtons);
    if (!btnText.isEmpty())
        setTexts(params, "btnText", btnText);
    {
        const Task task(params);
        QCOMPARE(textsOf(task.buttons()), texts);
        const QList<QPushButton *> buttons = task.buttons();
        for (QPushButton *button : buttons)
            QCOMPARE(wasMadeAutoDefault(button), button == buttons.first());
    }
    // An empty array is as good as none.
    setTexts(params, "btnText", btnText);
    QCOMPARE(textsOf(Task(params).buttons()), texts);
}

void TestQtTaskDialog::maskDisablesStandardButtons_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<QStringList>("disabled");
    QTest::newRow("0") << 0 << QStringList();
    for (const Standard &button : standards())
        QTest::addRow("%d", button.bit) << button.bit << QStringList{button.text};
    QTest::newRow("6") << 6 << QStringList{kYes, kNo};
    QTest::newRow("all") << 0xFFFF << QStringList{kOk, kYes, kNo, kRetry, kCancel, kClose};
}

void TestQtTaskDialog::maskDisablesStandardButtons()
{
    QFETCH(int, mask);
    QFETCH(QStringList, disabled);
    const ZvJsonPtr params = makeParams(kButtons, 63);
    params->SetDataI("nDisabledButtonMask", mask);
    const Task task(params);
    QStringList found;
    for (const QPushButton *button : task.buttons()) {
        if (!button->isEnabled())
            found << button->text();
    }
    QCOMPARE(found, disabled);
}

void TestQtTaskDialog::maskIsComparedWithTheIndexOfCustomButtons_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<QList<int>>("disabled");
    QTest::newRow("0") << 0 << QList<int>();
    QTest::newRow("1: the odd ones") << 1 << QList<int>{1, 3, 5, 7};
    QTest::newRow("2: those with bit 1") << 2 << QList<int>{2, 3, 6, 7};
    QTest::newRow("4") << 4 << QList<int>{4, 5, 6, 7};
    QTest::newRow("all bits never reach the first") << 0xFFFF << QList<int>{1, 2, 3, 4, 5, 6, 7};
}

void TestQtTaskDialog::maskIsComparedWithTheIndexOfCustomButtons()
{
    QFETCH(int, mask);
    QFETCH(QList<int>, disabled);
    const ZvJsonPtr params = makeParams(kButtons, kCallersButtons);
    QStringList texts;
    for (int i = 0; i < 8; ++i)
        texts << QString::number(i);
    setTexts(params, "btnText", texts);
    params->SetDataI("nDisabledButtonMask", mask);
    const Task task(params);
    QList<int> found;
    for (int i = 0; i < 8; ++i) {
        if (!task.buttons().at(i)->isEnabled())
            found << i;
    }
    QCOMPARE(found, disabled);
}

void TestQtTaskDialog::maskOneDisablesTheLoneOkButton()
{
    const ZvJsonPtr params = makeParams(kButtons, kCallersButtons);
    params->SetDataI("nDisabledButtonMask", 1);
    {
        const Task task(params);
        QVERIFY(!task.buttons().first()->isEnabled());
        QVERIFY(wasMadeAutoDefault(task.buttons().first()));
    }
    params->SetDataI("nDisabledButtonMask", 2);
    QVERIFY(Task(params).buttons().first()->isEnabled());
}

void TestQtTaskDialog::buttonsStandAtTheRight()
{
    Task task(makeParams(kTexts | kButtons | kCommands, 24));
    task.show();
    task.dialog->resize(600, task.dialog->height());
    const QWidget *panel = task.buttons().first()->parentWidget();
    QVERIFY(qobject_cast<QHBoxLayout *>(panel->layout()));
    QCOMPARE(panel->layout()->count(), 3);
    const QSpacerItem *spacer = panel->layout()->itemAt(0)->spacerItem();
    QVERIFY(spacer);
    QCOMPARE(spacer->sizeHint(), QSize(40, 20));
    for (int i = 1; i < 3; ++i)
        QCOMPARE(panel->layout()->itemAt(i)->alignment(), Qt::Alignment(Qt::AlignRight));
    QTRY_COMPARE(task.buttons().last()->geometry().right(), panel->width() - 1 - 1);
    QCOMPARE(task.buttons().first()->geometry().right() + 2, task.buttons().last()->x());
}

void TestQtTaskDialog::focusBitMakesTheAutoDefault_data()
{
    QTest::addColumn<int>("bit");
    QTest::addColumn<int>("id"); // 0: none of them
    QTest::newRow("missing means none") << kMissing << 0;
    QTest::newRow("yes") << 2 << 6;
    QTest::newRow("no") << 4 << 7;
    QTest::newRow("cancel") << 8 << 2;
    QTest::newRow("a button that is not there: none") << 32 << 0;
    QTest::newRow("two bits at once: none") << 6 << 0;
    QTest::newRow("an id is no bit") << 7 << 0;
}

void TestQtTaskDialog::focusBitMakesTheAutoDefault()
{
    QFETCH(int, bit);
    QFETCH(int, id);
    const ZvJsonPtr params = makeParams(kButtons, 2 | 4 | 8);
    if (bit != kMissing)
        params->SetDataI("focusFlagBtnId", bit);
    const Task task(params);
    const QList<QPushButton *> buttons = task.buttons();
    for (QPushButton *button : buttons) {
        const int buttonId = button->group()->id(button);
        QCOMPARE(wasMadeAutoDefault(button), buttonId == id);
    }
}

void TestQtTaskDialog::pressAnswersTheId_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("id");
    const QStringList three = {QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙")};
    for (int i = 0; i < standards().size(); ++i)
        QTest::addRow("standard button %d", i) << 63 << three << i << standards().at(i).id;
    for (int i = 0; i < 3; ++i)
        QTest::addRow("the caller's button %d", i) << kCallersButtons << three << i << i;
    QTest::newRow("no text of the caller's: OK is 1, not 0") << kCallersButtons << QStringList() << 0 << 1;
}

void TestQtTaskDialog::pressAnswersTheId()
{
    QFETCH(int, flag);
    QFETCH(QStringList, texts);
    QFETCH(int, position);
    QFETCH(int, id);
    const ZvJsonPtr params = makeParams(kTexts | kButtons, flag);
    setTexts(params, "btnText", texts);
    const Task task(params);
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(task.buttons().at(position), Qt::LeftButton); });
    QCOMPARE(task.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(task.adapter->getResult(), "result"), 1);
    QCOMPARE(intOf(params, "ControlBtn"), id);
}

void TestQtTaskDialog::mnemonicPressesTheButton()
{
    const ZvJsonPtr params = makeParams(kButtons, 2 | 4);
    const Task task(params);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        dialog->activateWindow();
        QVERIFY(zevaWaitForActive(dialog));
        QTest::keyClick(dialog, Qt::Key_N, Qt::AltModifier);
        QTRY_VERIFY(!dialog->isVisible()); // the button is seen going down first
    });
    QCOMPARE(task.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(params, "ControlBtn"), 7);
}

void TestQtTaskDialog::foreignIdIsReplacedByCancel_data()
{
    QTest::addColumn<int>("contentFlag");
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("answer");
    QTest::newRow("standard buttons") << int(kButtons) << 1 << 99 << 2;
    QTest::newRow("abort and ignore are no buttons here") << int(kButtons) << 1 << 3 << 2;
    QTest::newRow("a known id stays") << int(kButtons) << 1 << 8 << 8;
    QTest::newRow("beside commands it stays") << int(kButtons | kCommands) << 1 << 99 << 99;
    QTest::newRow("with the caller's buttons it stays") << int(kButtons) << kCallersButtons << 99 << 99;
}

void TestQtTaskDialog::foreignIdIsReplacedByCancel()
{
    QFETCH(int, contentFlag);
    QFETCH(int, flag);
    QFETCH(int, id);
    QFETCH(int, answer);
    const ZvJsonPtr params = makeParams(contentFlag, flag);
    const Task task(params);
    // A button that someone has added to the footer.
    QButtonGroup *footer = task.buttons().first()->group();
    footer->setId(task.buttons().first(), id);
    ModalDriver driver;
    driver.next([&](QDialog *) { QTest::mouseClick(task.buttons().first(), Qt::LeftButton); });
    QCOMPARE(task.adapter->doModal(), 1);
    QCOMPARE(intOf(params, "ControlBtn"), answer);
}

void TestQtTaskDialog::rejectAnswersTheLastButton_data()
{
    QTest::addColumn<int>("contentFlag");
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("id");
    QTest::newRow("OK alone") << int(kButtons) << 1 << 1;
    QTest::newRow("yes and no: no") << int(kButtons) << 6 << 7;
    QTest::newRow("retry and cancel: cancel") << int(kButtons) << 24 << 2;
    QTest::newRow("all: close") << int(kButtons) << 63 << 8;
    QTest::newRow("the caller's three: the third") << int(kButtons) << kCallersButtons << 2;
    QTest::newRow("a row without a button: close") << int(kButtons) << 128 << 8;
    QTest::newRow("no footer: close") << int(kTexts) << 1 << 8;
    QTest::newRow("commands alone: close") << int(kCommands) << 1 << 8;
    QTest::newRow("a check box alone: close") << int(kCheck) << 0 << 8;
}

void TestQtTaskDialog::rejectAnswersTheLastButton()
{
    QFETCH(int, contentFlag);
    QFETCH(int, flag);
    QFETCH(int, id);
    for (const ModalDriver::Action &way : waysOut()) {
        const ZvJsonPtr params = makeParams(contentFlag, flag);
        setTexts(params, "btnText", {QStringLiteral("甲"), QStringLiteral("乙"), QStringLiteral("丙")});
        setCommands(params, {{10, QStringLiteral("甲")}});
        const Task task(params);
        ModalDriver driver;
        driver.next(way);
        QCOMPARE(task.adapter->doModal(), 2);
        QVERIFY(driver.finished());
        QCOMPARE(intOf(params, "ControlBtn"), id);
    }
}

void TestQtTaskDialog::sizeIsThatOfTheContent()
{
    const ZvJsonPtr params = makeParams(kTexts | kButtons | kCommands | kCheck, 1);
    setCommands(params, {{1, QStringLiteral("甲")}});
    const Task task(params);
    QCOMPARE(task.dialog->size(), task.dialog->sizeHint());
    QVERIFY(task.dialog->width() > 417);
}

ZEVA_TEST_MAIN(TestQtTaskDialog)
#include "tst_qt_taskdialog.moc"
