// SPDX-License-Identifier: MIT
// The library in another language: everything that users read is translated, and nothing else changes.
#include "combodriver.h"
#include "everywidget.h"
#include "macrospy.h"
#include "pseudolanguage.h"

#include "utils/zventityimage.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeView>

namespace {

/// What a language has no say in: names of the drawing, words that are compared, numbers and their units, what the
/// caller of a dialog gave.
const QStringList &untranslated()
{
    static const QStringList texts = {
        QStringLiteral("ByLayer"),    QStringLiteral("ByBlock"),    QStringLiteral("BYLAYER"),
        QStringLiteral("BYBLOCK"),    QStringLiteral("HSL"),        QStringLiteral("RGB"),
        QStringLiteral("0"),          QStringLiteral("Continuous"), QStringLiteral("Standard"),
        QStringLiteral("Annotative"), QStringLiteral("ISO-25"),     QStringLiteral("Global"),
        QStringLiteral("SOLID"),      QStringLiteral("..."),
    };
    return texts;
}

/// What a user can read of a widget and of all in it.
QStringList textsOf(QWidget *root)
{
    QStringList texts;
    QList<QWidget *> widgets = root->findChildren<QWidget *>();
    widgets << root;
    for (QWidget *widget : qAsConst(widgets)) {
        texts << widget->toolTip() << widget->statusTip() << widget->whatsThis() << widget->accessibleName()
              << widget->accessibleDescription();
        if (widget->isWindow())
            texts << widget->windowTitle();
        if (auto *label = qobject_cast<QLabel *>(widget))
            texts << label->text();
        if (auto *button = qobject_cast<QAbstractButton *>(widget))
            texts << button->text();
        if (auto *group = qobject_cast<QGroupBox *>(widget))
            texts << group->title();
        if (auto *edit = qobject_cast<QLineEdit *>(widget))
            texts << edit->text() << edit->placeholderText();
        if (auto *combo = qobject_cast<QComboBox *>(widget))
            texts << rowsOf(*combo);
        if (auto *tabs = qobject_cast<QTabBar *>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                texts << tabs->tabText(i) << tabs->tabToolTip(i);
        }
        if (auto *list = qobject_cast<QListWidget *>(widget)) {
            for (int i = 0; i < list->count(); ++i)
                texts << list->item(i)->text() << list->item(i)->toolTip();
        }
        if (auto *table = qobject_cast<ZvQtLinetypeTableView *>(widget)) {
            for (int column = 0; column < table->model()->columnCount(); ++column)
                texts << table->model()->headerData(column, Qt::Horizontal).toString();
        }
        const QList<QAction *> actions = widget->actions();
        for (const QAction *action : actions)
            texts << action->text() << action->toolTip() << action->iconText();
    }
    texts.removeAll(QString());
    texts.removeDuplicates();
    return texts;
}

bool hasLetters(const QString &text)
{
    for (const QChar c : text) {
        if (c.isLetter())
            return true;
    }
    return false;
}

bool isNumberWithUnit(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^[0-9.,]+ ?(mm|%|\")?$"));
    return form.match(text).hasMatch();
}

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}

const QStringList &comboNames()
{
    static const QStringList names = {"colour list",
                                      "line type list",
                                      "line weight list",
                                      "text style",
                                      "dimension style",
                                      "table style",
                                      "multileader style",
                                      "cell style",
                                      "layer",
                                      "cell style of a column",
                                      "plot style name",
                                      "material",
                                      "plot style table",
                                      "block unit",
                                      "coordinate system",
                                      "view",

                                      "cell style of a row"};
    return names;
}

/// The drawing's current values, and what has been sent and said since the last call.
QStringList outcome(const ZvDbDatabase &drawing, std::size_t boxesBefore)
{
    QStringList lines;
    lines << QString::number(drawing.cecolor().color(), 16) << QString::number(drawing.celweight())
          << QString::number(quint64(drawing.clayer().handle()), 16)
          << QString::number(quint64(drawing.celtype().handle()), 16);
    lines << QString::fromUtf8(drawing.cplotstyle().toUtf8().c_str());
    lines << MacroSpy::take();
    lines << QStringLiteral("%1 boxes").arg(MessageBoxes::shown().size() - boxesBefore);
    return lines;
}

} // namespace

Q_DECLARE_METATYPE(const EveryWidget::Maker *)

class TestTranslations : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyTextIsTranslated_data() { widgets(); }
    void everyTextIsTranslated();
    void nothingIsCutInALongerLanguage_data() { dialogs(); }
    void nothingIsCutInALongerLanguage();
    void picksDoTheSameInEveryLanguage_data() { combos(); }
    void picksDoTheSameInEveryLanguage();
    void listsFollowTheDrawingInEveryLanguage_data() { combos(); }
    void listsFollowTheDrawingInEveryLanguage();
    void livingListsFollowTheLanguage_data() { lists(); }
    void livingListsFollowTheLanguage();
    void messagesOfTheFacadeAreTranslated();
    void colorTextsAreReadBack_data();
    void colorTextsAreReadBack();
    void colorNamesAreTypedInEitherLanguage_data();
    void colorNamesAreTypedInEitherLanguage();
    void boxButtonsAnswerTheSame_data();
    void boxButtonsAnswerTheSame();
    void placesKeepTheirKeys();
    void ucsNamesStayTypes();
    void plotStyleNormalIsWrittenByItsName();

private:
    static void rows(bool (*isWanted)(const EveryWidget::Maker &maker));
    static void widgets()
    {
        rows([](const EveryWidget::Maker &) { return true; });
    }
    static void dialogs()
    {
        rows([](const EveryWidget::Maker &maker) {
            // The colour dialog has a size that no text changes.
            return maker.kind == EveryWidget::kDialog
                && !QString::fromLatin1(maker.name).startsWith(QLatin1String("colour dialog"));
        });
    }
    static void combos();
    /// All but the colours, which take the names of the language that they are filled in.
    static void lists();
    /// A drawing with something to pick of each kind.
    void fillDrawing();
    QStringList picksOf(const EveryWidget::Maker &maker);
    QStringList shownBy(const EveryWidget::Maker &maker);
};

void TestTranslations::rows(bool (*isWanted)(const EveryWidget::Maker &maker))
{
    QTest::addColumn<const EveryWidget::Maker *>("maker");
    for (const EveryWidget::Maker &maker : EveryWidget::all()) {
        if (isWanted(maker))
            QTest::newRow(maker.name) << &maker;
    }
}

void TestTranslations::combos()
{
    rows([](const EveryWidget::Maker &maker) { return comboNames().contains(QLatin1String(maker.name)); });
}

void TestTranslations::lists()
{
    rows([](const EveryWidget::Maker &maker) {
        return comboNames().contains(QLatin1String(maker.name))
            && QLatin1String(maker.name) != QLatin1String("colour list");
    });
}

void TestTranslations::fillDrawing()
{
    addLayer(L"walls");
    addLineType(L"dashes", {1, -1});
    addPlotStyle(L"Normal");
    addMaterial(L"wood");
    addTextStyle(L"small");
}

void TestTranslations::everyTextIsTranslated()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const PseudoLanguage language;
    const EveryWidget made(*maker);
    QVERIFY(made.isReady());
    QVERIFY(made.show());
    QStringList left;
    for (const QString &text : textsOf(made.window())) {
        const bool isQts = language.texts.contains(text) || language.texts.contains(withoutMnemonic(text));
        const bool isCallers = text.startsWith(QLatin1String("caller"));
        if (hasLetters(text) && !PseudoLanguage::isTranslated(text) && !isQts && !isCallers && !isNumberWithUnit(text)
            && !untranslated().contains(text))
            left << text;
    }
    if (qobject_cast<QFileDialog *>(made.widget())) {
        // The folder, and the words that Qt puts together.
        const QString folder = static_cast<QFileDialog *>(made.widget())->directory().absolutePath();
        left.erase(std::remove_if(left.begin(), left.end(),
                                  [&](const QString &text) {
                                      const bool isJoined = std::any_of(
                                          language.texts.begin(), language.texts.end(), [&](const QString &part) {
                                              return part.size() > 2 && text.startsWith(part);
                                          });
                                      return isJoined || text.startsWith(QLatin1Char('/')) || folder.contains(text);
                                  }),
                   left.end());
    }
    QCOMPARE(left.join(QLatin1Char('|')), QString());
}

void TestTranslations::nothingIsCutInALongerLanguage()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const PseudoLanguage language;
    const EveryWidget made(*maker);
    QVERIFY(made.show());
    int looked = 0;
    const QList<QWidget *> widgets = made.window()->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        if (!widget->isVisible() || !((label && !label->wordWrap()) || button))
            continue;
        if (!PseudoLanguage::isTranslated(label ? label->text() : button->text()))
            continue;
        const auto *tool = qobject_cast<const QToolButton *>(widget);
        if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)
            continue;
        ++looked;
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), qPrintable(widget->metaObject()->className()));
    }
    if (!qobject_cast<QFileDialog *>(made.widget()) && QLatin1String(maker->name) != QLatin1String("print preview"))
        QVERIFY(looked > 0);
}

QStringList TestTranslations::picksOf(const EveryWidget::Maker &maker)
{
    openAnother();
    fillDrawing();
    MessageBoxes boxes;
    QStringList outcomes;
    const EveryWidget made(maker);
    auto *combo = qobject_cast<QComboBox *>(made.widget());
    for (int row = 0; combo && row < combo->count(); ++row) {
        const bool opensDialog = combo->itemData(row).canConvert<ColorData>()
            && combo->itemData(row).value<ColorData>().type == kColorItemSelect;
        combo->setCurrentIndex(-1);
        MacroSpy::take();
        ModalDriver driver;
        if (opensDialog)
            driver.next([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        const std::size_t before = MessageBoxes::shown().size();
        combo->setCurrentIndex(row);
        Q_EMIT combo->activated(row);
        runCommands();
        if (!driver.finished())
            outcomes << QStringLiteral("the dialog did not come");
        outcomes << QStringLiteral("row %1:").arg(row) << outcome(drawing(), before);
    }
    return outcomes;
}

void TestTranslations::picksDoTheSameInEveryLanguage()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const QStringList plain = picksOf(*maker);
    QVERIFY(!plain.isEmpty());
    const PseudoLanguage language;
    QCOMPARE(picksOf(*maker), plain);
}

QStringList TestTranslations::shownBy(const EveryWidget::Maker &maker)
{
    openAnother();
    fillDrawing();
    const EveryWidget made(maker);
    auto *combo = qobject_cast<QComboBox *>(made.widget());
    QStringList shown;
    const auto note = [&](const char *what) {
        shown << QStringLiteral("%1: row %2 of %3")
                     .arg(QLatin1String(what))
                     .arg(combo->currentIndex())
                     .arg(combo->count());
    };
    const auto after = [&](const char *what, std::function<void()> change) {
        const WorkCommand command(std::move(change));
        runMacro(L"TESTWORK");
        note(what);
    };
    note("new");
    for (const int color : {256, 0, 1, 7, 8, 255})
        after("colour", [&] { drawing().setCecolor(colorOfIndex(color)); });
    for (const ZvDb::LineWeight weight : {ZvDb::kLnWtByLwDefault, ZvDb::kLnWtByLayer, ZvDb::kLnWt030})
        after("weight", [&] { drawing().setCelweight(weight); });
    after("layer", [&] { drawing().setClayer(layerNamed(L"walls")); });
    combo->showPopup();
    combo->hidePopup();
    note("opened");
    return shown;
}

void TestTranslations::listsFollowTheDrawingInEveryLanguage()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const QStringList plain = shownBy(*maker);
    const PseudoLanguage language;
    QCOMPARE(shownBy(*maker), plain);
}

void TestTranslations::livingListsFollowTheLanguage()
{
    QFETCH(const EveryWidget::Maker *, maker);
    fillDrawing();
    const EveryWidget made(*maker);
    QVERIFY(made.show());
    auto *combo = qobject_cast<QComboBox *>(made.widget());
    const QStringList before = rowsOf(*combo);
    const int row = combo->currentIndex();
    QSignalSpy spy(combo, qOverload<int>(&QComboBox::currentIndexChanged));
    {
        const PseudoLanguage language;
        QStringList after;
        {
            const EveryWidget fresh(*maker);
            after = rowsOf(*qobject_cast<QComboBox *>(fresh.widget()));
        }
        QTRY_COMPARE(rowsOf(*combo), after);
        QCOMPARE(combo->currentIndex(), row);
    }
    QTRY_COMPARE(rowsOf(*combo), before);
    QCOMPARE(combo->currentIndex(), row);
    QCOMPARE(spy.count(), 0);
}

void TestTranslations::messagesOfTheFacadeAreTranslated()
{
    const PseudoLanguage language;
    const MessageBoxes boxes(6);
    addLayer(L"walls");
    change<ZvDbLayerTableRecord>(layerNamed(L"walls"), [](ZvDbLayerTableRecord &layer) { layer.setIsFrozen(true); });
    QVERIFY(!ZevaUISetting::setCLayer({}, L"walls"));
    const ZvString current
        = read<ZvDbLayerTableRecord>(drawing().clayer(), [](const auto &layer) { return layer.name(); });
    ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerOnOff, current, ZvCmColor());
    ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerFreeze, current, ZvCmColor());
    const QStringList lines = MessageBoxes::lines();
    QCOMPARE(lines.size(), 3);
    for (const QString &line : lines)
        QVERIFY2(line.startsWith(QChar(0x2039)), qPrintable(line));
    QCOMPARE(lines[2], PseudoLanguage::of(QStringLiteral("不能冻结当前图层\n")) + QStringLiteral("|Zevara|64"));
}

void TestTranslations::colorTextsAreReadBack_data()
{
    QTest::addColumn<bool>("isForeign");
    QTest::newRow("as it stands") << false;
    QTest::newRow("another language") << true;
}

void TestTranslations::colorTextsAreReadBack()
{
    QFETCH(bool, isForeign);
    const std::unique_ptr<PseudoLanguage> language(isForeign ? new PseudoLanguage : nullptr);
    for (int index = 8; index <= 255; ++index) {
        const ColorData data = formatColor(colorOfIndex(index).entityColor(), zvsiutCurPalette(), ZvDbObjectId());
        QCOMPARE(PseudoLanguage::isTranslated(data.name), isForeign);
        ColorData read;
        QVERIFY2(convertColorStrToColorData(ZvString(data.name.toUtf8().constData()), read), qPrintable(data.name));
        QCOMPARE(int(read.entityColor.colorIndex()), index);
        QCOMPARE(read.name, data.name);
        // What was written in the language of the source is read in every one.
        QVERIFY(convertColorStrToColorData(ZvString(QStringLiteral("颜色 %1").arg(index).toUtf8().constData()), read));
        QCOMPARE(int(read.entityColor.colorIndex()), index);
    }
    ColorData data;
    QVERIFY(!convertColorStrToColorData(L"‹颜色  ····›", data));
    QVERIFY(!convertColorStrToColorData(L"‹颜色 x ····›", data));
}

void TestTranslations::colorNamesAreTypedInEitherLanguage_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("answer");
    QTest::newRow("translated") << PseudoLanguage::of(QStringLiteral("绿")) << "1 |";
    QTest::newRow("of the source") << QStringLiteral("绿") << "1 |";
    QTest::newRow("no name") << PseudoLanguage::of(QStringLiteral("草"))
                             << QStringLiteral("2 |") + PseudoLanguage::of(QStringLiteral("不是有效的颜色名或值。"));
}

void TestTranslations::colorNamesAreTypedInEitherLanguage()
{
    QFETCH(QString, typed);
    const PseudoLanguage language;
    const MessageBoxes boxes;
    const EveryWidget made(
        {"green", EveryWidget::kDialog, [](EveryWidget &dialog) { EveryWidgetMakers::colorDialog(dialog, 195, 3); }});
    QLineEdit *edit = nullptr;
    for (QLineEdit *one : made.widget()->findChildren<QLineEdit *>()) {
        if (QLatin1String(one->parent()->metaObject()->className()) == QLatin1String("ZvIndexColorWnd"))
            edit = one;
    }
    QVERIFY(edit);
    QCOMPARE(edit->text(), PseudoLanguage::of(QStringLiteral("绿")));
    ModalDriver driver;
    driver.next([&](QDialog *shown) {
        edit->setText(typed);
        QTest::keyClick(shown, Qt::Key_Return);
    });
    if (typed.contains(QStringLiteral("草")))
        driver.next([](QDialog *shown) { QTest::keyClick(shown, Qt::Key_Escape); });
    const int result = made.adapter()->doModal();
    QVERIFY(driver.finished());
    const QString said = MessageBoxes::shown().empty()
        ? QString()
        : QString::fromUtf8(MessageBoxes::shown().front().text.toUtf8().c_str());
    QTEST(QString(QStringLiteral("%1 |").arg(result) + said), "answer");
}

void TestTranslations::boxButtonsAnswerTheSame_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QVector<int>>("ids");
    QTest::newRow("OK") << "MessageBox" << 0 << QVector<int>{0};
    QTest::newRow("OK, Cancel") << "MessageBox" << 1 << QVector<int>{1, 2};
    QTest::newRow("Abort, Retry, Ignore") << "MessageBox" << 2 << QVector<int>{3, 4, 5};
    QTest::newRow("Yes, No, Cancel") << "MessageBox" << 3 << QVector<int>{6, 7, 2};
    QTest::newRow("Yes, No") << "MessageBox" << 4 << QVector<int>{6, 7};
    QTest::newRow("Retry, Cancel") << "MessageBox" << 5 << QVector<int>{4, 2};
    QTest::newRow("task dialog") << "TaskDialog" << 63 << QVector<int>{1, 6, 7, 4, 2, 8};
}

void TestTranslations::boxButtonsAnswerTheSame()
{
    QFETCH(QString, dialog);
    QFETCH(int, flag);
    QFETCH(QVector<int>, ids);
    const PseudoLanguage language;
    for (int place = 0; place < ids.size(); ++place) {
        const ZvUiDialogBasePtr adapter = ModuleSession::createDialog(ZvString(dialog.toUtf8().constData()));
        const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
        params->SetDataI("contentFlag", dialog == QLatin1String("TaskDialog") ? 3 : 1);
        params->SetDataI("flag", flag);
        QVERIFY(adapter->onInit(params, nullptr));
        ModalDriver driver;
        QString text;
        driver.next([&](QDialog *shown) {
            const QList<QPushButton *> buttons = shown->findChildren<QPushButton *>();
            if (place < buttons.size()) {
                text = buttons.at(place)->text();
                QTest::mouseClick(buttons.at(place), Qt::LeftButton);
            }
        });
        adapter->doModal();
        QVERIFY(driver.finished());
        QVERIFY(PseudoLanguage::isTranslated(text));
        QCOMPARE(intOf(params, "ControlBtn"), ids.at(place));
    }
}

void TestTranslations::placesKeepTheirKeys()
{
    const auto keys = [](bool &translated) {
        const EveryWidget made(EveryWidget::all().at(8));
        QStringList keys;
        const auto *list = made.widget()->findChild<QListWidget *>();
        translated = PseudoLanguage::isTranslated(list->item(0)->text());
        for (int row = 0; row < list->count(); ++row)
            keys << list->item(row)->data(Qt::UserRole).toString();
        return keys;
    };
    bool isTranslated = true;
    const QStringList plain = keys(isTranslated);
    QVERIFY(!isTranslated);
    QCOMPARE(plain.first(), QStringLiteral("我的电脑"));
    const PseudoLanguage language;
    QCOMPARE(keys(isTranslated), plain);
    QVERIFY(isTranslated);
    const EveryWidget made(EveryWidget::all().at(8));
    auto *list = made.widget()->findChild<QListWidget *>();
    QVERIFY(made.show());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(0)).center());
    QCOMPARE(static_cast<QFileDialog *>(made.widget())->directory().absolutePath(), QStringLiteral("/"));
}

void TestTranslations::ucsNamesStayTypes()
{
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> plain;
    ZevaUISetting::getUcses(plain, nullptr);
    const PseudoLanguage language;
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZevaUISetting::getUcses(items, nullptr);
    QCOMPARE(items.length(), plain.length());
    for (int i = 0; i < items.length(); ++i) {
        QCOMPARE(int(items[i].type), int(plain[i].type));
        QCOMPARE(QString::fromUtf8(items[i].name.toUtf8().c_str()),
                 PseudoLanguage::of(QString::fromUtf8(plain[i].name.toUtf8().c_str())));
    }
    QCOMPARE(QString::fromUtf8(ZevaUISetting::getLineName(false, ZvDb::kLnWtByLwDefault)), QStringLiteral("默认"));
}

void TestTranslations::plotStyleNormalIsWrittenByItsName()
{
    addPlotStyle(L"Normal");
    const PseudoLanguage language;
    ZvUtilsPlotStyleNameComboBox combo(true, nullptr);
    const QString word = PseudoLanguage::of(QStringLiteral("普通"));
    drawing().setCplotstyle(L"ByLayer");
    const WorkCommand work([] {});
    runMacro(L"TESTWORK");
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
    combo.setCurrentText(word);
    QVERIFY(runCommands());
    QCOMPARE(drawing().cplotstyle(), ZvString(L"Normal"));
    QCOMPARE(combo.currentText(), word);
}

ZEVA_TEST_MAIN(TestTranslations)
#include "tst_translations.moc"
