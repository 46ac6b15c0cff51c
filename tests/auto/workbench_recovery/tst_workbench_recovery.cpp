// SPDX-License-Identifier: MIT
#include "autosave.h"
#include "infobar.h"
#include "modaldriver.h"
#include "recoverystore.h"
#include "smalldisk.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "zevatest.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Copies that are complete, in all folders of programs.
QStringList copiesIn(const QString &folder)
{
    QStringList copies;
    const QStringList programs = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &program : programs) {
        const QDir own(folder + QLatin1Char('/') + program);
        const QStringList descriptions = own.entryList({QStringLiteral("*.json")}, QDir::Files);
        for (const QString &description : descriptions)
            copies << own.filePath(description.chopped(5) + QLatin1String(".dxf"));
    }
    return copies;
}

/// A workbench in a process of its own, which is killed at the end at the latest.
class KilledProgram
{
public:
    KilledProgram(const QString &folder, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        m_process.setProcessEnvironment(environment);
        m_process.start(
            QStringLiteral(WORKBENCH_PROGRAM),
            QStringList({QStringLiteral("--recovery"), folder, QStringLiteral("--autosave"), QStringLiteral("1")})
                + arguments);
    }
    ~KilledProgram() { kill(); }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    void kill()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

QString messageOf(const QDialog *dialog)
{
    QStringList texts;
    const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts << label->text();
    return texts.join(QLatin1Char('\n'));
}

void press(const QDialog *dialog, const char *caption)
{
    const QList<QPushButton *> buttons = dialog->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text().startsWith(QLatin1String(caption)))
            QTest::mouseClick(button, Qt::LeftButton);
    }
}

const char kOpen[] = "&Open them";
const char kLater[] = "Ask &again";
const char kDelete[] = "&Delete";

} // namespace

class tst_workbench_recovery : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void killedProgramsDrawingIsOpenedAgain();
    void drawingThatWasNeverSavedIsOpenedAgain();
    void severalProgramsAreOfferedTogether();
    void otherAnswersOpenNothing_data();
    void otherAnswersOpenNothing();
    void fileChangedSinceIsTold();
    void runningProgramIsLeftAlone();
    void nothingIsAskedWithoutLeftovers();
    void copyThatCannotBeReadStays();
    void cutCopyIsNotOffered();

    void fullDiskKeepsTheOldDescription();
    void copyIsNoSave();
    void copyIsWrittenWhenSomethingHasChanged();
    void commandThatWaitsIsNoObstacle();
    void openObjectIsWaitedFor();
    void savedDrawingHasNoCopy();
    void closedDrawingHasNoCopy();
    void properEndLeavesNothing();
    void folderThatCannotBeWrittenIsTold();

private:
    QString recovery() const { return m_folder->filePath(QStringLiteral("recovery")); }
    QString plan() const { return m_folder->filePath(QStringLiteral("plan.dxf")); }
    QStringList lineInPlan() const { return {plan(), QStringLiteral("--macro"), QStringLiteral("_.LINE;0,0;10,10;;")}; }
    /// Runs a program until it has written its copy, and kills it.
    bool leaveBehind(const QStringList &arguments)
    {
        // Elsewhere, since it would ask about what others have left.
        const QString folder = m_folder->filePath(QStringLiteral("elsewhere"));
        {
            KilledProgram program(folder, arguments);
            if (!QTest::qWaitFor([&] { return copiesIn(folder).size() == 1; }, 60000))
                return false;
        }
        const QString name = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot).first();
        return QDir().mkpath(recovery())
            && QDir().rename(folder + QLatin1Char('/') + name, recovery() + QLatin1Char('/') + name);
    }
    QStringList lineInANewDrawing() const
    {
        return {QStringLiteral("--macro"), QStringLiteral("_.NEW"), QStringLiteral("--macro"),
                QStringLiteral("_.LINE;0,0;10,10;;")};
    }
    /// Starts a workbench that asks, and answers.
    void start(const char *answer, bool isAsked = true)
    {
        m_session = std::make_unique<WorkbenchSession>();
        ModalDriver driver;
        if (isAsked) {
            QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("m_pGroupSelectors.*")));
            driver.next([this, answer](QDialog *dialog) {
                m_message = messageOf(dialog);
                press(dialog, answer);
            });
        }
        m_session->workbench().startRecovery(recovery(), 0);
        m_isAnswered = driver.finished();
    }
    Autosave &autosave() { return *m_session->workbench().autosave(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<WorkbenchSession> m_session;
    QString m_message;
    bool m_isAnswered = false;
};

void tst_workbench_recovery::init()
{
    ZevaTest::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_message.clear();
    QVERIFY(QFile::copy(QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf"), plan()));
}

void tst_workbench_recovery::cleanup()
{
    m_session.reset();
    m_folder.reset();
    ZevaTest::cleanup();
}

void tst_workbench_recovery::killedProgramsDrawingIsOpenedAgain()
{
    const QByteArray onDisk = contentOf(plan());
    QVERIFY(leaveBehind(lineInPlan()));
    const QStringList old = copiesIn(recovery());

    start(kOpen);
    QVERIFY(m_isAnswered);
    QVERIFY(m_message.contains(plan()));
    QVERIFY(!m_message.contains(QStringLiteral("changed since")));
    QCOMPARE(zvDocManagerPtr()->documentCount(), 1);
    QCOMPARE(toQString(m_session->document()->fileName()), plan());
    QVERIFY(m_session->document()->isModified());
    QCOMPARE(contentOf(plan()), onDisk);

    const ZvDbDatabasePtr before = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(before->readFile(toZvString(plan()), report), Zv::eOk);
    QCOMPARE(m_session->database().entityCount(), before->entityCount() + 1);

    // The old copy is gone, and the new program keeps one of its own.
    QVERIFY(!QFile::exists(old.first()));
    QCOMPARE(copiesIn(recovery()).size(), 1);
    QVERIFY(m_session->window().host()->saveDocument(m_session->document()));
    QVERIFY(contentOf(plan()) != onDisk);
}

void tst_workbench_recovery::drawingThatWasNeverSavedIsOpenedAgain()
{
    QVERIFY(leaveBehind(lineInANewDrawing()));
    start(kOpen);
    QVERIFY(m_isAnswered);
    QVERIFY(m_message.contains(QStringLiteral("Drawing1")));
    QCOMPARE(zvDocManagerPtr()->documentCount(), 1);
    QVERIFY(m_session->document()->fileName().isEmpty());
    QCOMPARE(m_session->database().entityCount(), 1);
}

void tst_workbench_recovery::severalProgramsAreOfferedTogether()
{
    QVERIFY(leaveBehind(lineInPlan()));
    QVERIFY(leaveBehind(lineInANewDrawing()));
    start(kOpen);
    QVERIFY(m_message.contains(QStringLiteral("ended: 2")));
    QVERIFY(m_message.indexOf(plan()) < m_message.indexOf(QStringLiteral("Drawing1")));
    QCOMPARE(zvDocManagerPtr()->documentCount(), 2);
}

void tst_workbench_recovery::otherAnswersOpenNothing_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("left");
    QTest::newRow("ask again") << QByteArray(kLater) << 1;
    QTest::newRow("delete") << QByteArray(kDelete) << 0;
}

void tst_workbench_recovery::otherAnswersOpenNothing()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, left);
    QVERIFY(leaveBehind(lineInPlan()));
    start(answer.constData());
    QVERIFY(m_isAnswered);
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
    QCOMPARE(copiesIn(recovery()).size(), left);
    m_session.reset();
    QCOMPARE(copiesIn(recovery()).size(), left);

    // The next program asks again, or not.
    start(kLater, left > 0);
    QVERIFY(m_isAnswered);
}

void tst_workbench_recovery::fileChangedSinceIsTold()
{
    QVERIFY(leaveBehind(lineInPlan()));
    QFile file(plan());
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();
    start(kLater);
    QVERIFY(m_message.contains(QStringLiteral("changed since")));
}

void tst_workbench_recovery::runningProgramIsLeftAlone()
{
    KilledProgram program(recovery(), lineInPlan());
    QTRY_COMPARE_WITH_TIMEOUT(copiesIn(recovery()).size(), 1, 60000);
    start(kOpen, false);
    QVERIFY(m_isAnswered);
    QVERIFY(program.isRunning());
    QCOMPARE(copiesIn(recovery()).size(), 1);
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
}

void tst_workbench_recovery::nothingIsAskedWithoutLeftovers()
{
    start(kOpen, false);
    QVERIFY(m_isAnswered);
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
}

void tst_workbench_recovery::copyThatCannotBeReadStays()
{
    QVERIFY(leaveBehind(lineInPlan()));
    const QString copy = copiesIn(recovery()).first();
    QFile file(copy);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QVERIFY(file.write("this is no drawing") > 0);
    file.close();
    m_session = std::make_unique<WorkbenchSession>();
    ModalDriver driver;
    QString error;
    driver.next([](QDialog *dialog) { press(dialog, kOpen); });
    driver.next([&error](QDialog *dialog) {
        error = messageOf(dialog);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("m_pGroupSelectors.*")));
    m_session->workbench().startRecovery(recovery(), 0);
    QVERIFY(driver.finished());
    QVERIFY(!error.isEmpty());
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
    QCOMPARE(contentOf(copy), QByteArray("this is no drawing"));
}

void tst_workbench_recovery::cutCopyIsNotOffered()
{
    // Killed between copy and description: the copy may be half a drawing.
    QVERIFY(leaveBehind(lineInPlan()));
    const QString copy = copiesIn(recovery()).first();
    QVERIFY(QFile::remove(copy.chopped(4) + QLatin1String(".json")));
    start(kOpen, false);
    QVERIFY(m_isAnswered);
    QVERIFY(!QFile::exists(copy));
}

void tst_workbench_recovery::fullDiskKeepsTheOldDescription()
{
    const QTemporaryDir folder;
    RecoveryStore store(folder.path());
    QVERIFY(store.describe(1, QStringLiteral("/old.dxf"), QStringLiteral("old")));
    const QString description = store.copyPath(1).chopped(4) + QLatin1String(".json");
    const QByteArray before = contentOf(description);
    {
        const SmallDisk disk(10); // less than a description, which is written in one piece at the very end
        QVERIFY(!store.describe(1, QStringLiteral("/new.dxf"), QStringLiteral("new")));
    }
    QVERIFY(store.error().contains(description));
    QCOMPARE(contentOf(description), before);
}

void tst_workbench_recovery::copyIsNoSave()
{
    start(kOpen, false);
    m_session->newDrawing();
    m_session->type(QStringLiteral("circle 5,5 3"));
    QTRY_COMPARE(m_session->database().entityCount(), 1);
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 1);
    QVERIFY(autosave().hasCopy(m_session->document()));
    QVERIFY(m_session->document()->isModified());
    QVERIFY(m_session->document()->fileName().isEmpty());
    // Undone to where it was saved, it is as saved.
    m_session->type(QStringLiteral("u"));
    QTRY_COMPARE(m_session->database().entityCount(), 0);
    QVERIFY(!m_session->document()->isModified());
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 0);
}

void tst_workbench_recovery::copyIsWrittenWhenSomethingHasChanged()
{
    start(kOpen, false);
    m_session->newDrawing();
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 0);
    m_session->addLine(ZvGePoint3d(), ZvGePoint3d(1, 1));
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 1);
    const QString copy = copiesIn(recovery()).first();
    QVERIFY(QFile::remove(copy)); // it would be written again now if it were written each time
    autosave().writeCopies();
    QVERIFY(!QFile::exists(copy));
    m_session->addLine(ZvGePoint3d(), ZvGePoint3d(2, 2));
    QVERIFY(!autosave().hasCopy(m_session->document()));
    autosave().writeCopies();
    QVERIFY(QFile::exists(copy));
}

void tst_workbench_recovery::commandThatWaitsIsNoObstacle()
{
    start(kOpen, false);
    m_session->newDrawing();
    PromptDriver driver(*m_session);
    driver.next(QString(), [this] { m_session->type(QStringLiteral("0,0")); });
    driver.next(QString(), [this] { m_session->type(QStringLiteral("10,0")); });
    driver.next(QString(), [this] {
        autosave().writeCopies();
        m_session->type(QString());
    });
    m_session->type(QStringLiteral("line"));
    QVERIFY2(driver.finish(), driver.failure());
    QCOMPARE(copiesIn(recovery()).size(), 1);
    const ZvDbDatabasePtr copy = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(copy->readFile(toZvString(copiesIn(recovery()).first()), report), Zv::eOk);
    QCOMPARE(copy->entityCount(), 1);
}

void tst_workbench_recovery::openObjectIsWaitedFor()
{
    start(kOpen, false);
    m_session->newDrawing();
    const ZvDbObjectId id = m_session->addLine(ZvGePoint3d(), ZvGePoint3d(1, 1));
    {
        const ZvDbObjectPointer<ZvDbLine> open(id, ZvDb::kForWrite);
        autosave().writeCopies();
        QCOMPARE(copiesIn(recovery()).size(), 0);
    }
    QTRY_COMPARE(copiesIn(recovery()).size(), 1);
}

void tst_workbench_recovery::savedDrawingHasNoCopy()
{
    start(kOpen, false);
    QVERIFY(m_session->window().host()->openDocument(plan()));
    m_session->addLine(ZvGePoint3d(), ZvGePoint3d(1, 1));
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 1);
    QVERIFY(m_session->window().host()->saveDocument(m_session->document()));
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 0);
}

void tst_workbench_recovery::closedDrawingHasNoCopy()
{
    start(kOpen, false);
    m_session->newDrawing();
    m_session->addLine(ZvGePoint3d(), ZvGePoint3d(1, 1));
    autosave().writeCopies();
    QCOMPARE(copiesIn(recovery()).size(), 1);
    zvDocManagerPtr()->closeDocument(m_session->document());
    QCOMPARE(copiesIn(recovery()).size(), 0);
}

void tst_workbench_recovery::properEndLeavesNothing()
{
    start(kOpen, false);
    m_session->newDrawing();
    m_session->addLine(ZvGePoint3d(), ZvGePoint3d(1, 1));
    autosave().writeCopies();
    m_session.reset();
    QVERIFY(QDir(recovery()).isEmpty());
}

void tst_workbench_recovery::folderThatCannotBeWrittenIsTold()
{
    m_session = std::make_unique<WorkbenchSession>();
    m_session->workbench().startRecovery(plan() + QLatin1String("/recovery"), 0); // below a file
    QVERIFY(m_session->window().infoBar()->isVisible());
    QVERIFY(m_session->window().infoBar()->details().contains(plan()));
    m_session->newDrawing();
    m_session->addLine(ZvGePoint3d(), ZvGePoint3d(1, 1));
    autosave().writeCopies();
    QVERIFY(!autosave().hasCopy(m_session->document()));
}

ZEVA_TEST_MAIN(tst_workbench_recovery)
#include "tst_workbench_recovery.moc"
