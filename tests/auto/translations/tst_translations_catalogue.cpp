// SPDX-License-Identifier: MIT
// The catalogues that go with the library, and the workbench in another language.
#include "everywidget.h"
#include "language.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QListWidget>
#include <QPointer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

struct Message
{
    QString context;
    QString source;
    QString translation;
    bool isFinished = true;

    QString key() const { return context + QLatin1Char('|') + source; }
};

/// With the characters that XML cannot hold put back.
QString readText(QXmlStreamReader &xml)
{
    QString text;
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isCharacters()) {
            text += xml.text();
        } else if (xml.isStartElement() && xml.name() == QLatin1String("byte")) {
            text += QChar(xml.attributes().value(QLatin1String("value")).mid(1).toInt(nullptr, 16));
            xml.skipCurrentElement();
        }
    }
    return text;
}

QVector<Message> readCatalogue(const QString &path)
{
    QVector<Message> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return messages;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            messages.append({context, readText(xml), QString(), true});
        } else if (xml.name() == QLatin1String("translation") && !messages.isEmpty()) {
            messages.last().isFinished = !xml.attributes().hasAttribute(QLatin1String("type"));
            messages.last().translation = readText(xml);
        }
    }
    return messages;
}

QString sourceFolder()
{
    return QStringLiteral(ZEVA_SOURCE_DIR);
}

QStringList catalogues()
{
    QStringList paths;
    const QDir folder(sourceFolder() + QLatin1String("/translations"));
    const QStringList names = folder.entryList({QStringLiteral("zevaqt_*.ts")});
    for (const QString &name : names)
        paths << folder.filePath(name);
    return paths;
}

QStringList keysOf(const QVector<Message> &messages)
{
    QStringList keys;
    for (const Message &message : messages)
        keys << message.key();
    keys.sort();
    return keys;
}

int places(const QString &text)
{
    return text.count(QLatin1Char('%'));
}

QStringList edges(const QString &text)
{
    return {text.left(text.indexOf(text.trimmed())),
            text.right(text.size() - text.indexOf(text.trimmed()) - text.trimmed().size())};
}

bool hasChinese(const QString &text)
{
    for (const QChar c : text) {
        if (c.script() == QChar::Script_Han)
            return true;
    }
    return false;
}

} // namespace

class TestTranslationsCatalogue : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void isComplete_data() { files(); }
    void isComplete();
    void isUpToDate_data() { files(); }
    void isUpToDate();
    void workbenchSpeaksEnglishOnDemand();
    void unknownLanguagesAreRefused_data();
    void unknownLanguagesAreRefused();
    void languageOfTheSourceNeedsNoCatalogue();

private:
    static void files();
};

void TestTranslationsCatalogue::files()
{
    QTest::addColumn<QString>("path");
    for (const QString &path : catalogues())
        QTest::newRow(qPrintable(QFileInfo(path).fileName())) << path;
}

void TestTranslationsCatalogue::isComplete()
{
    QFETCH(QString, path);
    const QVector<Message> messages = readCatalogue(path);
    QVERIFY(messages.size() > 100);
    for (const Message &message : messages) {
        QVERIFY2(message.isFinished && !message.translation.trimmed().isEmpty(), qPrintable(message.key()));
        QVERIFY2(places(message.source) == places(message.translation), qPrintable(message.key()));
        QVERIFY2(!hasChinese(message.translation), qPrintable(message.key()));
        // A message begins and ends with the same lines and blanks: what stands before or behind it counts on them. The
        // part of a title is the one that needs a blank of its own.
        if (message.source != QStringLiteral("未找到文件"))
            QVERIFY2(edges(message.source) == edges(message.translation), qPrintable(message.key()));
        const bool hasMnemonic = message.source.contains(QLatin1Char('&'));
        QVERIFY2(hasMnemonic == message.translation.contains(QLatin1Char('&')), qPrintable(message.key()));
    }
}

void TestTranslationsCatalogue::isUpToDate()
{
    QFETCH(QString, path);
    const QString program = QStringLiteral(ZEVA_LUPDATE);
    QVERIFY2(QFile::exists(program), "lupdate was not found: packaging/install-packages test");
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess process;
    process.start(program,
                  {QStringLiteral("-silent"), QStringLiteral("-no-obsolete"), QStringLiteral("-source-language"),
                   QStringLiteral("zh_CN"), sourceFolder() + QLatin1String("/src/qtutils"), QStringLiteral("-ts"),
                   copy});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(keysOf(readCatalogue(path)), keysOf(readCatalogue(copy)));
}

void TestTranslationsCatalogue::workbenchSpeaksEnglishOnDemand()
{
    QVERIFY(EveryWidget::all().size() > 30);
    {
        QCoreApplication &application = *QCoreApplication::instance();
        QCOMPARE(useLanguage(application, QStringLiteral("en")), QString());
    }
    const auto removeAll = [] {
        const QList<QTranslator *> translators = QCoreApplication::instance()->findChildren<QTranslator *>();
        for (QTranslator *translator : translators) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
    };
    for (const EveryWidget::Maker &maker : EveryWidget::all()) {
        const EveryWidget made(maker);
        const QList<QLabel *> labels = made.window()->findChildren<QLabel *>();
        for (const QLabel *label : labels)
            QVERIFY2(!hasChinese(label->text()), qPrintable(label->text()));
        const QList<QAbstractButton *> buttons = made.window()->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons)
            QVERIFY2(!hasChinese(button->text()), qPrintable(button->text()));
        const QList<QComboBox *> combos = made.window()->findChildren<QComboBox *>();
        for (const QComboBox *combo : combos) {
            for (int row = 0; row < combo->count(); ++row)
                QVERIFY2(!hasChinese(combo->itemText(row)), qPrintable(combo->itemText(row)));
        }
        if (auto *dialog = qobject_cast<QFileDialog *>(made.widget())) {
            QCOMPARE(dialog->findChild<QGroupBox *>()->title(), QStringLiteral("Preview"));
            QCOMPARE(dialog->findChild<QListWidget *>()->item(0)->text(), QStringLiteral("Computer"));
        }
        if (QLatin1String(maker.name) == QLatin1String("message box, Yes, No and Cancel"))
            QCOMPARE(textsOf(made.window()->findChildren<QPushButton *>()), QStringList({"&Yes", "&No", "&Cancel"}));
    }
    removeAll();
    QCOMPARE(QCoreApplication::translate("ZvColorDialog", "取消"), QStringLiteral("取消"));
}

void TestTranslationsCatalogue::unknownLanguagesAreRefused_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("one without a catalogue") << "fr";
    QTest::newRow("no language") << "xx";
    QTest::newRow("a path") << "../en";
}

void TestTranslationsCatalogue::unknownLanguagesAreRefused()
{
    QFETCH(QString, language);
    QCOMPARE(useLanguage(*QCoreApplication::instance(), language),
             QStringLiteral("There are no texts in the language \"%1\".").arg(language));
    QVERIFY(QCoreApplication::instance()->findChildren<QTranslator *>().isEmpty());
}

void TestTranslationsCatalogue::languageOfTheSourceNeedsNoCatalogue()
{
    QCOMPARE(useLanguage(*QCoreApplication::instance(), QStringLiteral("zh")), QString());
    QCOMPARE(QCoreApplication::translate("ZvColorDialog", "取消"), QStringLiteral("取消"));
    const QList<QTranslator *> translators = QCoreApplication::instance()->findChildren<QTranslator *>();
    for (QTranslator *translator : translators) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
}

ZEVA_TEST_MAIN(TestTranslationsCatalogue)
#include "tst_translations_catalogue.moc"
