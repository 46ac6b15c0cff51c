// SPDX-License-Identifier: MIT
#include "colordialoganswer.h"
#include "colordialogrun.h"
#include "combodriver.h"
#include "drawingtest.h"
#include "metamethods.h"
#include "noticecases.h"

#include "zvcolorcombobox.h"

#include "utils/zventityimage.h"

#include <QAbstractItemView>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>

namespace {

ZvCmEntityColor word(ZvCm::ColorMethod method, unsigned value = 0)
{
    return ZvCmEntityColor(unsigned(method) << 24 | value);
}

ZvCmEntityColor indexWord(int index)
{
    return word(ZvCm::kByACI, unsigned(index));
}

ZvCmEntityColor rgbWord(int red, int green, int blue)
{
    return word(ZvCm::kByColor, unsigned(red) << 16 | unsigned(green) << 8 | unsigned(blue));
}

ZvCmColor colorOf(ZvCmEntityColor entityColor)
{
    ZvCmColor color;
    color.setColor(entityColor.color());
    return color;
}

const QStringList kDefaultRows
    = {QStringLiteral("ByLayer"), QStringLiteral("ByBlock"),    QStringLiteral("红"), QStringLiteral("黄"),
       QStringLiteral("绿"),      QStringLiteral("青"),         QStringLiteral("蓝"), QStringLiteral("洋红"),
       QStringLiteral("白"),      QStringLiteral("选择颜色...")};
constexpr int kSelectRow = 9;

ColorData dataOf(const QComboBox &combo, int row)
{
    return combo.itemData(row).value<ColorData>();
}

int swatchSize(const QComboBox &combo)
{
    return QFontMetrics(combo.font()).height() + 4;
}

QImage swatchOf(const QComboBox &combo, int row)
{
    const int size = swatchSize(combo);
    return combo.itemIcon(row).pixmap(size, size).toImage().convertToFormat(QImage::Format_RGB32);
}

QImage expectedSwatch(int size, QRgb color)
{
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(qRgb(0, 0, 0));
    setPixels(image, 1, 1, size - 2, size - 2, color);
    return image;
}

/// A palette of the test: index i is red i, green 1, blue 2.
const unsigned *countingPalette()
{
    static unsigned palette[256];
    for (unsigned i = 0; i < 256; ++i)
        palette[i] = i | 1 << 8 | 2 << 16;
    return palette;
}

QLineEdit *indexText(QDialog *dialog)
{
    return dialog->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>();
}

void typeIndexAndAccept(QDialog *dialog, const QString &text)
{
    dialog->findChild<QTabWidget *>()->setCurrentIndex(0);
    indexText(dialog)->setFocus();
    indexText(dialog)->selectAll();
    QTest::keyClicks(indexText(dialog), text);
    QTest::keyClick(indexText(dialog), Qt::Key_Return);
}

void typeRgbAndAccept(QDialog *dialog, const QString &text)
{
    dialog->findChild<QTabWidget *>()->setCurrentIndex(1);
    auto *edit = dialog->findChild<ZvTrueColorWnd *>()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void press(QDialog *dialog, const QString &text)
{
    for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->text() == text)
            QTest::mouseClick(button, Qt::LeftButton);
    }
}

} // namespace

Q_DECLARE_METATYPE(ZvCmEntityColor)

class TestColorComboBox : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    // records
    void newRecordIsEmpty();
    void recordTravelsAsAVariant();
    void coloursAreFormatted_data();
    void coloursAreFormatted();
    void foregroundDecidesTheSeventhName_data();
    void foregroundDecidesTheSeventhName();
    void byLayerHasTheLayersColour_data();
    void byLayerHasTheLayersColour();
    void byLayerOfALayerThatCannotBeRead();
    void byLayerFollowsTheSelection();
    void byBlockWithALayerHasNoColour();
    void nullPaletteIsBlack();
    void colourTextsAreRead_data();
    void colourTextsAreRead();
    void colourTextsGoByThePaletteInForce();
    void colourTextsAreRefused_data();
    void colourTextsAreRefused();

    // construction
    void methodsAreAsTold();
    void threeWaysOfMakingOne();
    void colourAtConstructionIsShown_data();
    void colourAtConstructionIsShown();
    void fillTellsNothing();
    void styleSheetAndDelegate();
    void hookedOneIsOnTheBus();
    void missingBusIsNoError();
    void metaObjectFindsTheReceiver();

    // rows
    void viewStyleDecidesTheRows_data();
    void viewStyleDecidesTheRows();
    void useCurrentShowsTheCurrentColour();
    void recordsOfTheRows();
    void swatchesArePainted_data();
    void swatchesArePainted();
    void dialogSwatchIsAGradient();
    void rowsAreAppendedUntilTheDialogRowIsThere();
    void rowsGoBeforeTheDialogRow();
    void textIsTheKey();
    void appendedColours();
    void insertedColourHasItsText();
    void rowsOfCallersGoByThePaletteInForce();
    void rowsOfCallersHaveNoLayer();
    void placesOutOfRange_data();
    void placesOutOfRange();
    void rowOfAnEmptiedList();
    void noneIsTheFirstRow();
    void onlyTheLastTenCustomColoursStay();
    void customColoursSurviveARefill();
    void subclassSeesTheHooks();
    void layerOfTheList();

    // questions
    void plainColourIsFound();
    void kernelColourIsFound_data();
    void kernelColourIsFound();
    void indexIsFoundOrAdded();
    void colourOfARow();
    void currentColour();
    void colourAtAnIndex();

    // following the drawing
    void currentColourIsShown_data();
    void currentColourIsShown();
    void unknownColourIsAddedAndKept();
    void byLayerSwatchFollowsTheLayer();
    void byLayerSwatchIsOfTheLayerGiven();
    void swatchStaysWhereTheColourStays();
    void statusDecidesWhatIsShown_data();
    void statusDecidesWhatIsShown();
    void selectionIsFollowed();
    void paletteStateDecidesThePalette();
    void noticesAreFiltered_data();
    void noticesAreFiltered();
    void withoutDocumentNothingHappens();
    void showingTellsNothing();

    // picking
    void pickIsToldWithItsColour();
    void pickWritesTheCurrentColour();
    void pickWritesTheSelection();
    void pickOfAForeignRowIsWritten();
    void pickOfAnUnhookedOneWritesNothing();
    void pickIsOneUndoStep();
    void entityOnALockedLayerIsLeftOut();
    void rowWithoutARecordShowsAMessage_data();
    void rowWithoutARecordShowsAMessage();
    void keyboardGoesBackToTheDrawing_data();
    void keyboardGoesBackToTheDrawing();

    // opening the list
    void listOpens_data();
    void listOpens();
    void openingRefillsTheHookedOne();
    void openingPutsTheRowsRight_data();
    void openingPutsTheRowsRight();
    void openingLeavesRowsThatStandAlone();
    void openingKeepsTheRowWithoutWriting();
    void blankStaysBlankOverOpening();
    void blankShowsTheFirstRowOtherwise_data();
    void blankShowsTheFirstRowOtherwise();

    // the dialog
    void dialogIsAskedForTheOldColour_data();
    void dialogIsAskedForTheOldColour();
    void dialogIsAskedAsTold_data();
    void dialogIsAskedAsTold();
    void cancelGoesBack();
    void cancelGoesBackToTheLastPick();
    void oldColourStandsBehindTheDialog();
    void dialogColourIsPicked_data();
    void dialogColourIsPicked();
    void dialogPickByButtons();
    void knownColourAddsNoRow();
    void placesToGoBackToAreFixed_data();
    void placesToGoBackToAreFixed();
    void foundByValueGoesBackToTheColourBefore();
    void forbiddenByViewStyle_data();
    void forbiddenByViewStyle();
    void addedColourIsKeptAndWritten();
    void answersOfAnotherDialog_data();
    void answersOfAnotherDialog();
    void answersWithoutARowBecomeBlack_data();
    void answersWithoutARowBecomeBlack();
    void missingDialogChangesNothing();
    void deletedWhileTheDialogRuns();
    void noticeBehindTheDialogWritesNothing();

    // a day at work
    void journeyThroughTheList();
    void pickedColoursAreInTheSavedFile();

private:
    QString pickFromDialog(ZvColorComboBox &combo, const ModalDriver::Action &act);
    ZvCmColor currentColor() { return drawing().cecolor(); }
    ZvCmColor colorOfEntity(ZvDbObjectId id)
    {
        return read<ZvDbEntity>(id, [](const ZvDbEntity &entity) { return entity.color(); });
    }
};

void TestColorComboBox::init()
{
    DrawingTest::init();
}

void TestColorComboBox::cleanup()
{
    zvsiutSetDisplayBackground(0);
    zvcmSetPaletteAvailable(true);
    DrawingTest::cleanup();
}

// ---- records --------------------------------------------------------------------------------------------------------

void TestColorComboBox::newRecordIsEmpty()
{
    const ColorData data;
    QVERIFY(!data.color.isValid());
    QCOMPARE(data.name, QString());
    QCOMPARE(data.type, 0);
    QCOMPARE(data.entityColor.color(), 0xC2000000u);
}

void TestColorComboBox::recordTravelsAsAVariant()
{
    const ZvColorComboBox combo(nullptr);
    QCOMPARE(QMetaType::type("ColorData"), qMetaTypeId<ColorData>());
    QVERIFY(QMetaType::typeFlags(qMetaTypeId<ColorData>()) & QMetaType::MovableType);
}

void TestColorComboBox::coloursAreFormatted_data()
{
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::addColumn<QColor>("swatch");
    const QString names[] = {QStringLiteral("红"), QStringLiteral("黄"),   QStringLiteral("绿"), QStringLiteral("青"),
                             QStringLiteral("蓝"), QStringLiteral("洋红"), QStringLiteral("白")};
    for (int i = 1; i <= 7; ++i)
        QTest::addRow("index %d", i) << indexWord(i) << names[i - 1] << 0 << QColor(i, 1, 2);
    QTest::newRow("index 8") << indexWord(8) << "颜色 8" << 0 << QColor(8, 1, 2);
    QTest::newRow("index 255") << indexWord(255) << "颜色 255" << 0 << QColor(255, 1, 2);
    QTest::newRow("index 0 is white") << indexWord(0) << "颜色 0" << 0 << QColor(255, 255, 255);
    QTest::newRow("index 256 is white") << indexWord(256) << "颜色 256" << 0 << QColor(255, 255, 255);
    QTest::newRow("index 257 is white") << indexWord(257) << "颜色 257" << 0 << QColor(255, 255, 255);
    QTest::newRow("by block") << word(ZvCm::kByBlock) << "ByBlock" << 1 << QColor(7, 1, 2);
    QTest::newRow("none, with red and blue exchanged") << word(ZvCm::kNone) << "无" << 0 << QColor(2, 1, 7);
    QTest::newRow("true colour") << rgbWord(10, 20, 30) << "RGB:10,20,30" << 0 << QColor(10, 20, 30);
    QTest::newRow("by pen reads as true colour")
        << word(ZvCm::kByPen, 0x0A141E) << "RGB:10,20,30" << 0 << QColor(10, 20, 30);
}

void TestColorComboBox::coloursAreFormatted()
{
    QFETCH(ZvCmEntityColor, color);
    QFETCH(QString, name);
    QFETCH(int, type);
    QFETCH(QColor, swatch);
    const ColorData data = formatColor(color, countingPalette(), ZvDbObjectId());
    QCOMPARE(data.name, name);
    QCOMPARE(data.type, type);
    QCOMPARE(data.color, swatch);
    QCOMPARE(data.entityColor.color(), color.color());
}

void TestColorComboBox::foregroundDecidesTheSeventhName_data()
{
    QTest::addColumn<unsigned>("foreground");
    QTest::addColumn<QString>("name");
    QTest::newRow("white") << 0xFFFFFFu << "白";
    QTest::newRow("black") << 0u << "黑";
    QTest::newRow("nearly black") << 1u << "白";
}

void TestColorComboBox::foregroundDecidesTheSeventhName()
{
    QFETCH(unsigned, foreground);
    QFETCH(QString, name);
    unsigned palette[256] = {};
    palette[7] = foreground;
    QCOMPARE(formatColor(indexWord(7), palette, ZvDbObjectId()).name, name);
    QCOMPARE(formatColor(indexWord(1), palette, ZvDbObjectId()).name, QStringLiteral("红"));
}

void TestColorComboBox::byLayerHasTheLayersColour_data()
{
    QTest::addColumn<ZvCmEntityColor>("layerColor");
    QTest::addColumn<bool>("given"); // else the current layer
    QTest::addColumn<QColor>("swatch");
    QTest::newRow("current layer by index") << indexWord(3) << false << QColor(3, 1, 2);
    QTest::newRow("current layer in true colour") << rgbWord(9, 8, 7) << false << QColor(9, 8, 7);
    QTest::newRow("a layer by index, by the kernel's palette") << indexWord(3) << true << QColor(0, 255, 0);
    QTest::newRow("a layer in true colour") << rgbWord(9, 8, 7) << true << QColor(9, 8, 7);
}

void TestColorComboBox::byLayerHasTheLayersColour()
{
    QFETCH(ZvCmEntityColor, layerColor);
    QFETCH(bool, given);
    QFETCH(QColor, swatch);
    const ZvDbObjectId layer = given ? addLayer(L"Walls") : drawing().clayer();
    change<ZvDbLayerTableRecord>(layer, [&](ZvDbLayerTableRecord &record) { record.setColor(colorOf(layerColor)); });
    const ColorData data = formatColor(word(ZvCm::kByLayer), countingPalette(), given ? layer : ZvDbObjectId());
    QCOMPARE(data.name, QStringLiteral("ByLayer"));
    QCOMPARE(data.type, 2);
    QCOMPARE(data.color, swatch);
}

void TestColorComboBox::byLayerOfALayerThatCannotBeRead()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> writer(layer, ZvDb::kForWrite);
        QVERIFY(!formatColor(word(ZvCm::kByLayer), countingPalette(), layer).color.isValid());
    }
    // an erased layer counts as none: the current one's colour
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.erase(); });
    QCOMPARE(formatColor(word(ZvCm::kByLayer), countingPalette(), layer).color, QColor(7, 1, 2));
    // and so does no drawing at all
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(formatColor(word(ZvCm::kByLayer), countingPalette(), ZvDbObjectId()).color, QColor(7, 1, 2));
}

void TestColorComboBox::byLayerFollowsTheSelection()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(indexWord(5))); });
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [&](ZvDbEntity &entity) { entity.setLayer(layer); });
    select({line});
    QCOMPARE(formatColor(word(ZvCm::kByLayer), countingPalette(), ZvDbObjectId()).color, QColor(5, 1, 2));
}

void TestColorComboBox::byBlockWithALayerHasNoColour()
{
    const ColorData data = formatColor(word(ZvCm::kByBlock), countingPalette(), addLayer(L"Walls"));
    QCOMPARE(data.name, QStringLiteral("ByBlock"));
    QCOMPARE(data.type, 1);
    QVERIFY(!data.color.isValid());
    // an erased layer counts as none
    const ZvDbObjectId erased = addLayer(L"Gone");
    change<ZvDbLayerTableRecord>(erased, [](ZvDbLayerTableRecord &record) { record.erase(); });
    QCOMPARE(formatColor(word(ZvCm::kByBlock), countingPalette(), erased).color, QColor(7, 1, 2));
}

void TestColorComboBox::nullPaletteIsBlack()
{
    for (const ZvCmEntityColor color :
         {indexWord(1), indexWord(7), word(ZvCm::kByBlock), word(ZvCm::kByLayer), word(ZvCm::kNone)})
        QCOMPARE(formatColor(color, nullptr, ZvDbObjectId()).color, QColor(0, 0, 0));
}

void TestColorComboBox::colourTextsAreRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::newRow("BYLAYER") << "BYLAYER" << word(ZvCm::kByLayer);
    QTest::newRow("by layer in small letters") << "bylayer" << word(ZvCm::kByLayer);
    QTest::newRow("ByBlock") << "ByBlock" << word(ZvCm::kByBlock);
    QTest::newRow("a bare number") << "42" << indexWord(42);
    QTest::newRow("0") << "0" << indexWord(0);
    QTest::newRow("256") << "256" << indexWord(256);
    QTest::newRow("RGB") << "RGB:10,20,30" << rgbWord(10, 20, 30);
    QTest::newRow("R stands for RGB:") << "Rxyz1,2,3" << rgbWord(1, 2, 3);
    QTest::newRow("G stands for RGB:") << "Gxyz1,2,3" << rgbWord(1, 2, 3);
    QTest::newRow("B stands for RGB:") << "Bxyz1,2,3" << rgbWord(1, 2, 3);
    QTest::newRow("a colon stands for RGB:") << ":xyz1,2,3" << rgbWord(1, 2, 3);
    QTest::newRow("components are bytes") << "RGB:256,257,258" << rgbWord(0, 1, 2);
    QTest::newRow("the name of an index") << "颜色 8" << indexWord(8);
    QTest::newRow("any word and an index") << "color 8" << indexWord(8);
}

void TestColorComboBox::colourTextsAreRead()
{
    QFETCH(QString, text);
    QFETCH(ZvCmEntityColor, color);
    ColorData data;
    QVERIFY(convertColorStrToColorData(ZvString(text.toUtf8().constData()), data));
    const ColorData expected = formatColor(color, zvsiutCurPalette(), ZvDbObjectId());
    QCOMPARE(data.entityColor.color(), color.color());
    QCOMPARE(data.name, expected.name);
    QCOMPARE(data.color, expected.color);
    QCOMPARE(data.type, expected.type);
}

void TestColorComboBox::colourTextsGoByThePaletteInForce()
{
    zvsiutSetDisplayBackground(0xFFFFFF); // index 7 is black there
    ColorData data;
    QVERIFY(convertColorStrToColorData(L"7", data));
    QCOMPARE(data.name, QStringLiteral("黑"));
    QCOMPARE(data.color, QColor(0, 0, 0));
}

void TestColorComboBox::colourTextsAreRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("a word without a blank") << "white";
    QTest::newRow("a name without an index") << "红";
    QTest::newRow("RGB with two numbers") << "RGB:1,2";
    QTest::newRow("RGB with four numbers") << "RGB:1,2,3,4";
    QTest::newRow("RGB with an empty part") << "RGB:1,,3";
    QTest::newRow("RGB below zero") << "RGB:1,-2,3";
    QTest::newRow("RGB with blanks") << "RGB:1, 2, 3";
    QTest::newRow("RGB alone") << "RGB:";
    QTest::newRow("R alone") << "R";
    QTest::newRow("a colour word in capitals") << "BLUE 5";
    QTest::newRow("small letters are no RGB") << "rgb:1,2,3";
    QTest::newRow("a word and a word") << "color red";
    QTest::newRow("two blanks") << "color  8";
    QTest::newRow("a blank at the end") << "color ";
    QTest::newRow("below zero") << "-1";
    QTest::newRow("a number beyond all indices") << "99999999999";
    QTest::newRow("by layer with a blank") << "BYLAYER ";
}

void TestColorComboBox::colourTextsAreRefused()
{
    QFETCH(QString, text);
    ColorData data;
    data.name = QStringLiteral("untouched");
    QVERIFY(!convertColorStrToColorData(ZvString(text.toUtf8().constData()), data));
    QCOMPARE(data.name, QStringLiteral("untouched"));
}

// ---- construction ---------------------------------------------------------------------------------------------------

void TestColorComboBox::methodsAreAsTold()
{
    QCOMPARE(ownMethods(ZvColorComboBox::staticMetaObject),
             signaturesOf({"ColorItemChanged(QColor)", "currentColorIndexChanged(int)", "on_activated(int)"}));
}

void TestColorComboBox::threeWaysOfMakingOne()
{
    const ZvColorComboBox plain(nullptr);
    QVERIFY(!plain.hooked);
    QVERIFY(!plain.pickFirstInfo);
    QCOMPARE(plain.objectName(), QString());
    QCOMPARE(rowsOf(plain), kDefaultRows);
    QCOMPARE(plain.currentIndex(), 0);

    for (const bool hook : {false, true}) {
        const ZvColorComboBox named(hook, nullptr);
        QCOMPARE(named.hooked, hook);
        QVERIFY(named.pickFirstInfo);
        QCOMPARE(named.objectName(), QStringLiteral("ZvColorComboBox"));
        QCOMPARE(rowsOf(named), kDefaultRows);
    }
    const ZvColorComboBox coloured(false, colorOf(indexWord(42)), nullptr);
    QVERIFY(coloured.pickFirstInfo);
    QCOMPARE(coloured.objectName(), QString());
}

void TestColorComboBox::colourAtConstructionIsShown_data()
{
    QTest::addColumn<bool>("paletteState");
    QTest::newRow("by the palette in force") << true;
    QTest::newRow("palette state off") << false;
}

void TestColorComboBox::colourAtConstructionIsShown()
{
    QFETCH(bool, paletteState);
    document()->editingContext()->displayContext()->setPaletteState(paletteState);
    const ZvColorComboBox combo(false, colorOf(indexWord(42)), nullptr);
    QStringList expected = kDefaultRows;
    if (paletteState)
        expected.insert(kSelectRow, QStringLiteral("颜色 42"));
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentIndex(), paletteState ? kSelectRow : 0);
}

void TestColorComboBox::fillTellsNothing()
{
    ZvColorComboBox combo(true, nullptr);
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy color(&combo, &ZvColorComboBox::ColorItemChanged);
    combo.init(colorOf(indexWord(42)), true, ZvDbObjectId());
    combo.setViewStyle(3);
    QCOMPARE(index.size(), 0);
    QCOMPARE(color.size(), 0);
    QVERIFY(combo.hooked);
    QVERIFY(!combo.signalsBlocked());
}

void TestColorComboBox::styleSheetAndDelegate()
{
    const ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.styleSheet(),
             QStringLiteral("QComboBox QAbstractItemView::item {min-height: %1px;}").arg(swatchSize(combo) + 4));
    QCOMPARE(combo.itemDelegate()->metaObject()->className(), "QStyledItemDelegate");
    QCOMPARE(combo.itemDelegate()->parent(), static_cast<const QObject *>(&combo));
}

void TestColorComboBox::hookedOneIsOnTheBus()
{
    drawing().setCecolor(colorOf(indexWord(3)));
    ZvColorComboBox hooked(true, nullptr);
    ZvColorComboBox plain(false, nullptr);
    runMacro(L"_.REGEN ");
    QCOMPARE(hooked.currentText(), QStringLiteral("绿"));
    QCOMPARE(plain.currentText(), QStringLiteral("ByLayer"));
    auto *gone = new ZvColorComboBox(true, nullptr);
    delete gone;
    runMacro(L"_.REGEN ");
}

void TestColorComboBox::missingBusIsNoError()
{
    const ZvRxObjectPtr bus(zv_arbitDict_getservice(ZvString(wchar_t(14))));
    zv_arbitDict_clearservice(ZvString(wchar_t(14)));
    drawing().setCecolor(colorOf(indexWord(3)));
    {
        ZvColorComboBox combo(true, nullptr);
        QCOMPARE(rowsOf(combo), kDefaultRows);
        runMacro(L"_.REGEN ");
        QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
    }
    zv_arbitDict_regservice(ZvString(wchar_t(14)), bus);
}

void TestColorComboBox::metaObjectFindsTheReceiver()
{
    ZvColorComboBox combo(true, nullptr);
    QObject *object = &combo;
    QCOMPARE(static_cast<CZvQtControlHelp *>(object->qt_metacast("CZvQtControlHelp")),
             static_cast<CZvQtControlHelp *>(&combo));
}

// ---- rows -----------------------------------------------------------------------------------------------------------

void TestColorComboBox::viewStyleDecidesTheRows_data()
{
    QTest::addColumn<unsigned>("style");
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<bool>("hasSelect");
    const QString byLayer = QStringLiteral("ByLayer");
    const QString byBlock = QStringLiteral("ByBlock");
    const QString none = QStringLiteral("无");
    const QString current = QStringLiteral("使用当前项");
    QTest::newRow("0, the seven alone") << 0u << QStringList{} << false;
    QTest::newRow("1, by layer and by block") << 1u << QStringList{byLayer, byBlock} << false;
    QTest::newRow("2, the dialog") << 2u << QStringList{} << true;
    QTest::newRow("4 means nothing") << 4u << QStringList{} << false;
    QTest::newRow("7, the default") << 7u << QStringList{byLayer, byBlock} << true;
    QTest::newRow("8, none") << 8u << QStringList{none} << false;
    QTest::newRow("16, the current one") << 16u << QStringList{current} << false;
    QTest::newRow("bits above mean nothing") << 0xFFFFFFE4u << QStringList{} << false;
    QTest::newRow("all of them in order") << 31u << QStringList{current, none, byLayer, byBlock} << true;
}

void TestColorComboBox::viewStyleDecidesTheRows()
{
    QFETCH(unsigned, style);
    QFETCH(QStringList, before);
    QFETCH(bool, hasSelect);
    ZvColorComboBox combo(nullptr);
    combo.setViewStyle(style);
    QStringList expected = before + kDefaultRows.mid(2, 7);
    if (hasSelect)
        expected << kDefaultRows.last();
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentIndex(), 0);
}

void TestColorComboBox::useCurrentShowsTheCurrentColour()
{
    drawing().setCecolor(colorOf(indexWord(3)));
    ZvColorComboBox combo(nullptr);
    combo.setViewStyle(16);
    QCOMPARE(dataOf(combo, 0).color, QColor(0, 255, 0));
    QCOMPARE(dataOf(combo, 0).entityColor.color(), 0xC8000000u);
    COMPARE_PICTURES(swatchOf(combo, 0), expectedSwatch(swatchSize(combo), qRgb(0, 255, 0)));
}

void TestColorComboBox::recordsOfTheRows()
{
    const ZvColorComboBox combo(nullptr);
    QCOMPARE(dataOf(combo, 0).entityColor.color(), 0xC0000000u);
    QCOMPARE(dataOf(combo, 0).type, 2);
    QCOMPARE(dataOf(combo, 1).entityColor.color(), 0xC1000000u);
    QCOMPARE(dataOf(combo, 1).type, 1);
    for (int index = 1; index <= 7; ++index) {
        QCOMPARE(dataOf(combo, index + 1).entityColor.color(), 0xC3000000u + unsigned(index));
        QCOMPARE(dataOf(combo, index + 1).type, 0);
    }
    const ColorData select = dataOf(combo, kSelectRow);
    QCOMPARE(select.type, 4);
    QCOMPARE(select.color, QColor(0, 0, 255));
    QCOMPARE(select.entityColor.color(), 0xC2000000u);
    for (int row = 0; row < combo.count(); ++row)
        QCOMPARE(dataOf(combo, row).name, combo.itemText(row));
}

void TestColorComboBox::swatchesArePainted_data()
{
    QTest::addColumn<unsigned>("background");
    QTest::newRow("dark") << 0u;
    QTest::newRow("light") << 0xFFFFFFu;
}

void TestColorComboBox::swatchesArePainted()
{
    QFETCH(unsigned, background);
    zvsiutSetDisplayBackground(background);
    const ZvColorComboBox combo(nullptr);
    const int size = swatchSize(combo);
    const auto rgb = [](int index) {
        const unsigned color = zvsiutCurPalette()[index];
        return qRgb(int(color & 0xFF), int(color >> 8 & 0xFF), int(color >> 16 & 0xFF));
    };
    COMPARE_PICTURES(swatchOf(combo, 0), expectedSwatch(size, rgb(7))); // the layer is white by index
    COMPARE_PICTURES(swatchOf(combo, 1), expectedSwatch(size, rgb(7)));
    for (int index = 1; index <= 7; ++index)
        COMPARE_PICTURES(swatchOf(combo, index + 1), expectedSwatch(size, rgb(index)));
    QCOMPARE(combo.itemText(8), background ? QStringLiteral("黑") : QStringLiteral("白"));
}

void TestColorComboBox::dialogSwatchIsAGradient()
{
    const ZvColorComboBox combo(nullptr);
    const QImage swatch = swatchOf(combo, kSelectRow);
    const int size = swatchSize(combo);
    QCOMPARE(swatch.size(), QSize(size, size));
    const double stops[] = {0.2, 0.4, 0.6, 0.8, 1.0};
    const QColor colors[] = {Qt::gray, Qt::green, Qt::red, Qt::magenta, Qt::black};
    const auto at = [&](double place) {
        if (place <= stops[0])
            return colors[0];
        int upper = 1;
        while (place > stops[upper])
            ++upper;
        const double share = (place - stops[upper - 1]) / (stops[upper] - stops[upper - 1]);
        const auto mix = [share](int from, int to) { return int(from + (to - from) * share + 0.5); };
        return QColor(mix(colors[upper - 1].red(), colors[upper].red()),
                      mix(colors[upper - 1].green(), colors[upper].green()),
                      mix(colors[upper - 1].blue(), colors[upper].blue()));
    };
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const QColor actual(swatch.pixel(x, y));
            const bool isFrame = x == 0 || y == 0 || x == size - 1 || y == size - 1;
            const QColor expected = isFrame ? QColor(Qt::black) : at((x + 0.5) / size);
            // Qt keeps gradients in tables of 256 steps
            QVERIFY(qAbs(actual.red() - expected.red()) <= 6 && qAbs(actual.green() - expected.green()) <= 6
                    && qAbs(actual.blue() - expected.blue()) <= 6);
        }
    }
}

void TestColorComboBox::rowsAreAppendedUntilTheDialogRowIsThere()
{
    ZvColorComboBox combo(nullptr);
    combo.setViewStyle(0);
    ColorData data;
    data.name = QStringLiteral("mine");
    QCOMPARE(combo.AddColorItem(0, data), 7); // the index is not heeded
    QCOMPARE(combo.itemText(7), QStringLiteral("mine"));
    combo.AppendFinish();
    QCOMPARE(combo.itemText(8), kDefaultRows.last());
    data.name = QStringLiteral("first");
    QCOMPARE(combo.AddColorItem(0, data), 0);
}

void TestColorComboBox::rowsGoBeforeTheDialogRow()
{
    ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.AppendColorItem(QColor(1, 2, 3), QStringLiteral("mine")), kSelectRow);
    QCOMPARE(combo.itemText(kSelectRow), QStringLiteral("mine"));
    QCOMPARE(combo.itemText(kSelectRow + 1), kDefaultRows.last());
}

void TestColorComboBox::textIsTheKey()
{
    ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.AppendColorItem(QColor(1, 2, 3), QStringLiteral("红")), 2); // the first of that text
    QCOMPARE(combo.count(), kDefaultRows.size() + 1);
    QCOMPARE(dataOf(combo, kSelectRow).color, QColor(1, 2, 3));
}

void TestColorComboBox::appendedColours()
{
    ZvColorComboBox combo(nullptr);
    const int byColor = combo.AppendColorItem(QColor(1, 2, 3), QStringLiteral("mine"));
    QCOMPARE(dataOf(combo, byColor).type, 0);
    QCOMPARE(dataOf(combo, byColor).color, QColor(1, 2, 3));
    QCOMPARE(dataOf(combo, byColor).entityColor.color(), 0xC2000000u);
    const int byKernel = combo.AppendColorItem(colorOf(rgbWord(9, 8, 7)));
    QCOMPARE(combo.itemText(byKernel), QStringLiteral("RGB:9,8,7"));
    QCOMPARE(dataOf(combo, byKernel).entityColor.color(), rgbWord(9, 8, 7).color());
    ColorData foreign;
    foreign.name = QStringLiteral("foreign");
    foreign.type = kColorItemForeign;
    const int byRecord = combo.AppendColorItem(foreign);
    QCOMPARE(dataOf(combo, byRecord).type, 3);
}

void TestColorComboBox::insertedColourHasItsText()
{
    ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.insertColorItem(1, QStringLiteral("mine"), colorOf(indexWord(5))), 1);
    QCOMPARE(dataOf(combo, 1).name, QStringLiteral("mine"));
    QCOMPARE(dataOf(combo, 1).entityColor.color(), indexWord(5).color());
}

void TestColorComboBox::rowsOfCallersGoByThePaletteInForce()
{
    zvsiutSetDisplayBackground(0xFFFFFF);
    ZvColorComboBox combo(nullptr);
    combo.setViewStyle(0);
    combo.AppendColorItem(colorOf(indexWord(7)));
    combo.insertColorItem(8, QStringLiteral("mine"), colorOf(indexWord(7)));
    QCOMPARE(combo.itemText(7), QStringLiteral("黑"));
    QCOMPARE(dataOf(combo, 7).color, QColor(0, 0, 0));
    QCOMPARE(dataOf(combo, 8).color, QColor(0, 0, 0));
}

void TestColorComboBox::rowsOfCallersHaveNoLayer()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer,
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(rgbWord(9, 8, 7))); });
    ZvColorComboBox combo(nullptr);
    combo.setViewStyle(0);
    combo.setLayerId(layer);
    combo.AppendColorItem(colorOf(word(ZvCm::kByLayer)));
    combo.insertColorItem(8, QStringLiteral("mine"), colorOf(word(ZvCm::kByLayer)));
    QCOMPARE(dataOf(combo, 7).color, QColor(255, 255, 255)); // the current layer's
    QCOMPARE(dataOf(combo, 8).color, QColor(255, 255, 255));
}

void TestColorComboBox::placesOutOfRange_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("row");
    QTest::newRow("below the first") << -5 << 0;
    QTest::newRow("beyond the last") << 99 << 10;
}

void TestColorComboBox::placesOutOfRange()
{
    QFETCH(int, place);
    QFETCH(int, row);
    ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.insertColorItem(place, QStringLiteral("mine"), colorOf(indexWord(42))), row);
    QCOMPARE(combo.count(), 11);
    QCOMPARE(combo.itemText(row), QStringLiteral("mine"));
}

void TestColorComboBox::rowOfAnEmptiedList()
{
    ZvColorComboBox combo(nullptr);
    combo.clear();
    QCOMPARE(combo.AppendColorItem(colorOf(indexWord(42))), 0);
    QCOMPARE(rowsOf(combo), QStringList{QStringLiteral("颜色 42")});
}

void TestColorComboBox::noneIsTheFirstRow()
{
    ZvColorComboBox combo(nullptr);
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    combo.SetUseColorNone();
    QCOMPARE(combo.itemText(0), QStringLiteral("无"));
    QCOMPARE(dataOf(combo, 0).entityColor.color(), 0xC8000000u);
    QCOMPARE(dataOf(combo, 0).entityColor.colorIndex(), std::uint16_t(257));
    QCOMPARE(combo.count(), kDefaultRows.size() + 1);
    QCOMPARE(spy.size(), 0);
    ZvColorComboBox plain(nullptr);
    plain.setViewStyle(0);
    plain.SetUseColorNone(); // without the dialog's row it is appended
    QCOMPARE(plain.itemText(7), QStringLiteral("无"));
}

void TestColorComboBox::onlyTheLastTenCustomColoursStay()
{
    ZvColorComboBox combo(nullptr);
    for (int i = 1; i <= 11; ++i)
        combo.appendCustomInfo(formatColor(rgbWord(i, i, i), countingPalette(), ZvDbObjectId()));
    combo.init(ZvCmColor(), false, ZvDbObjectId());
    QStringList expected = kDefaultRows;
    for (int i = 2; i <= 11; ++i)
        expected.insert(expected.size() - 1, QStringLiteral("RGB:%1,%1,%1").arg(i));
    QCOMPARE(rowsOf(combo), expected);
}

void TestColorComboBox::customColoursSurviveARefill()
{
    ZvColorComboBox combo(nullptr);
    const ColorData mine = formatColor(rgbWord(1, 2, 3), countingPalette(), ZvDbObjectId());
    combo.appendCustomInfo(mine);
    combo.appendCustomInfo(mine); // no test for duplicates
    for (const unsigned style : {7u, 0u, 2u}) {
        combo.setViewStyle(style);
        QCOMPARE(rowsOf(combo).count(mine.name), 2);
    }
}

void TestColorComboBox::subclassSeesTheHooks()
{
    class Subclass : public ZvColorComboBox
    {
    public:
        using ZvColorComboBox::ZvColorComboBox;
        void subInit() override
        {
            AppendColorItem(QColor(1, 1, 1), QStringLiteral("sub"));
            isQuiet = !hooked && signalsBlocked();
        }
        bool isQuiet = false;
    };
    Subclass combo(true, nullptr);
    combo.setViewStyle(7);
    QVERIFY(combo.isQuiet); // while it is filled
    QVERIFY(combo.hooked && !combo.signalsBlocked());
    QStringList expected = kDefaultRows;
    expected.insert(kSelectRow, QStringLiteral("sub"));
    QCOMPARE(rowsOf(combo), expected);
}

void TestColorComboBox::layerOfTheList()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer,
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(rgbWord(9, 8, 7))); });
    ZvColorComboBox combo(nullptr);
    combo.setLayerId(layer);
    QCOMPARE(dataOf(combo, 0).color, QColor(255, 255, 255)); // no refill
    combo.setViewStyle(7);
    QCOMPARE(dataOf(combo, 0).color, QColor(9, 8, 7));
    QCOMPARE(dataOf(combo, 1).color, QColor(255, 255, 255)); // by block never has the layer
}

// ---- questions ------------------------------------------------------------------------------------------------------

void TestColorComboBox::plainColourIsFound()
{
    ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.FindColor(QColor(255, 0, 0)), 2);
    QCOMPARE(combo.FindColor(QColor(255, 255, 255)), 8); // not ByLayer, which is white as well
    QCOMPARE(combo.FindColor(QColor(0, 0, 255)), 6); // not the dialog's row
    QCOMPARE(combo.FindColor(QColor(1, 2, 3)), -1);
}

void TestColorComboBox::kernelColourIsFound_data()
{
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::addColumn<int>("row");
    QTest::newRow("by layer") << word(ZvCm::kByLayer) << 0;
    QTest::newRow("by block") << word(ZvCm::kByBlock) << 1;
    QTest::newRow("red") << indexWord(1) << 2;
    QTest::newRow("an index that is not there") << indexWord(42) << -1;
    QTest::newRow("a true colour that is there") << rgbWord(9, 8, 7) << kSelectRow + 1;
    QTest::newRow("a true colour that is not there") << rgbWord(9, 8, 8) << -1;
    QTest::newRow("by the index, whatever the method") << rgbWord(0, 0, 1) << 2;
    QTest::newRow("a foreign row is passed over") << rgbWord(5, 5, 5) << -1;
    QTest::newRow("true colour of black comes to the first row of index 0") << rgbWord(0, 0, 0) << 1;
}

void TestColorComboBox::kernelColourIsFound()
{
    QFETCH(ZvCmEntityColor, color);
    QFETCH(int, row);
    ZvColorComboBox combo(nullptr);
    ColorData foreign = formatColor(rgbWord(5, 5, 5), countingPalette(), ZvDbObjectId());
    foreign.type = kColorItemForeign;
    combo.AppendColorItem(foreign);
    combo.AppendColorItem(colorOf(rgbWord(9, 8, 7)));
    QCOMPARE(combo.FindColor(colorOf(color)), row);
}

void TestColorComboBox::indexIsFoundOrAdded()
{
    ZvColorComboBox combo(nullptr);
    QCOMPARE(combo.FindColor(256), 0);
    QCOMPARE(combo.FindColor(0), 1);
    QCOMPARE(combo.FindColor(5), 6);
    const int added = combo.FindColor(10);
    QCOMPARE(added, combo.count() - 1); // which is the dialog's row
    QCOMPARE(combo.itemText(added), kDefaultRows.last());
    QCOMPARE(combo.itemText(added - 1), QStringLiteral("RGB(255, 0, 0)"));
    QCOMPARE(dataOf(combo, added - 1).color, QColor(255, 0, 0));
    combo.FindColor(10); // the record has no index: it is added once more
    QCOMPARE(rowsOf(combo).count(QStringLiteral("RGB(255, 0, 0)")), 2);

    ZvColorComboBox plain(nullptr);
    plain.setViewStyle(0);
    QCOMPARE(plain.itemText(plain.FindColor(10)), QStringLiteral("RGB(255, 0, 0)"));
    ColorData foreign = formatColor(indexWord(30), zvsiutCurPalette(), ZvDbObjectId());
    foreign.type = kColorItemForeign;
    plain.AppendColorItem(foreign);
    QCOMPARE(plain.itemText(plain.FindColor(30)), QStringLiteral("RGB(255, 127, 0)")); // not the foreign row
}

void TestColorComboBox::colourOfARow()
{
    ZvColorComboBox combo(nullptr);
    QColor color(1, 2, 3);
    for (const int row : {-1, 0, 1, kSelectRow, 99}) {
        QVERIFY(!combo.FindColor(row, color));
        QCOMPARE(color, QColor(1, 2, 3));
    }
    QVERIFY(combo.FindColor(2, color));
    QCOMPARE(color, QColor(255, 0, 0));
}

void TestColorComboBox::currentColour()
{
    ZvColorComboBox combo(nullptr);
    combo.setCurrentIndex(4);
    QCOMPARE(combo.GetCurrentColor(), QColor(0, 255, 0));
    QCOMPARE(combo.GetCurrentColorEx().color(), indexWord(3).color());
    combo.SetNullItem();
    QCOMPARE(combo.currentIndex(), -1);
    QCOMPARE(combo.currentText(), QString());
    QVERIFY(!combo.GetCurrentColor().isValid());
    QCOMPARE(combo.GetCurrentColorEx().color(), 0xC2000000u);
    combo.blockSignals(true);
    combo.addItem(QStringLiteral("no record"));
    combo.setCurrentIndex(combo.count() - 1);
    combo.blockSignals(false);
    QVERIFY(!combo.GetCurrentColor().isValid());
    QCOMPARE(combo.GetCurrentColorEx().color(), 0xC2000000u);
}

static QStringList s_assertions;

void TestColorComboBox::colourAtAnIndex()
{
    const ZvColorComboBox combo(nullptr);
    s_assertions.clear();
    const ZvAssertHandler before
        = zvSetAssertHandler([](const char *text, const char *, int) { s_assertions << QString::fromUtf8(text); });
    QCOMPARE(combo.GetColor(2).color(), indexWord(1).color());
    QCOMPARE(s_assertions.size(), 0);
    QCOMPARE(combo.GetColor(-1).color(), 0xC2000000u);
    QCOMPARE(combo.GetColor(combo.count()).color(), 0xC2000000u);
    zvSetAssertHandler(before);
    QCOMPARE(s_assertions, (QStringList{QStringLiteral("false"), QStringLiteral("false")}));
}

// ---- following the drawing ------------------------------------------------------------------------------------------

void TestColorComboBox::currentColourIsShown_data()
{
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::addColumn<QString>("text");
    QTest::newRow("by layer") << word(ZvCm::kByLayer) << "ByLayer";
    QTest::newRow("by block") << word(ZvCm::kByBlock) << "ByBlock";
    QTest::newRow("red") << indexWord(1) << "红";
    QTest::newRow("an index") << indexWord(42) << "颜色 42";
    QTest::newRow("true colour") << rgbWord(1, 2, 3) << "RGB:1,2,3";
}

void TestColorComboBox::currentColourIsShown()
{
    QFETCH(ZvCmEntityColor, color);
    QFETCH(QString, text);
    ZvColorComboBox combo(true, nullptr);
    combo.setEnabled(false);
    drawing().setCecolor(colorOf(color));
    runMacro(L"_.REGEN ");
    QCOMPARE(combo.currentText(), text);
    QVERIFY(combo.isEnabled());
    QCOMPARE(combo.GetCurrentColorEx().colorMethod(), color.colorMethod());
}

void TestColorComboBox::unknownColourIsAddedAndKept()
{
    ZvColorComboBox combo(true, nullptr);
    drawing().setCecolor(colorOf(rgbWord(1, 2, 3)));
    runMacro(L"_.REGEN ");
    runMacro(L"_.REGEN "); // found the second time
    QStringList expected = kDefaultRows;
    expected.insert(kSelectRow, QStringLiteral("RGB:1,2,3"));
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentIndex(), kSelectRow);
    combo.setViewStyle(7);
    QCOMPARE(rowsOf(combo), expected);
}

void TestColorComboBox::byLayerSwatchFollowsTheLayer()
{
    ZvColorComboBox combo(true, nullptr);
    change<ZvDbLayerTableRecord>(drawing().clayer(),
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(indexWord(1))); });
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer")); // the layer's notice has come by itself
    COMPARE_PICTURES(swatchOf(combo, 0), expectedSwatch(swatchSize(combo), qRgb(255, 0, 0)));
}

void TestColorComboBox::byLayerSwatchIsOfTheLayerGiven()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer,
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(rgbWord(9, 8, 7))); });
    ZvColorComboBox combo(true, nullptr);
    combo.setLayerId(layer);
    runMacro(L"_.REGEN ");
    COMPARE_PICTURES(swatchOf(combo, 0), expectedSwatch(swatchSize(combo), qRgb(9, 8, 7)));
    QCOMPARE(dataOf(combo, 0).color, QColor(255, 255, 255)); // the record waits for the next refill
}

void TestColorComboBox::swatchStaysWhereTheColourStays()
{
    ZvColorComboBox combo(true, nullptr);
    runMacro(L"_.REGEN ");
    QPixmap callers(swatchSize(combo), swatchSize(combo));
    callers.fill(Qt::yellow);
    combo.setItemIcon(0, callers);
    runMacro(L"_.REGEN ");
    QCOMPARE(swatchOf(combo, 0).pixel(1, 1), qRgb(255, 255, 0)); // the caller's own
    change<ZvDbLayerTableRecord>(drawing().clayer(),
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(indexWord(1))); });
    QCOMPARE(swatchOf(combo, 0).pixel(1, 1), qRgb(255, 0, 0));
}

void TestColorComboBox::statusDecidesWhatIsShown_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("no document known") << 0 << "" << false;
    QTest::newRow("no selection: the drawing's colour") << 1 << "绿" << true;
    QTest::newRow("uniform: the summary's colour") << 2 << "红" << true;
    QTest::newRow("mixed: blank") << 3 << "" << true;
}

void TestColorComboBox::statusDecidesWhatIsShown()
{
    QFETCH(int, status);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    drawing().setCecolor(colorOf(indexWord(3)));
    ZvColorComboBox combo(false, nullptr);
    auto *info = static_cast<ZvGlobalUIReactorHelp::SColorInfo *>(combo.pickFirstInfo);
    info->status = status;
    info->value = colorOf(indexWord(1));
    combo.setEnabled(!enabled);
    combo.updateData(false);
    QCOMPARE(combo.currentText(), text);
    QCOMPARE(combo.isEnabled(), enabled);
}

void TestColorComboBox::selectionIsFollowed()
{
    ZvColorComboBox combo(true, nullptr);
    const ZvDbObjectId first = addLine();
    const ZvDbObjectId second = addLine();
    change<ZvDbEntity>(first, [](ZvDbEntity &entity) { entity.setColor(colorOf(indexWord(1))); });
    change<ZvDbEntity>(second, [](ZvDbEntity &entity) { entity.setColor(colorOf(indexWord(5))); });
    select({first});
    QCOMPARE(combo.currentText(), QStringLiteral("红"));
    select({second});
    QCOMPARE(combo.currentText(), QStringLiteral("蓝"));
    select({first, second});
    QCOMPARE(combo.currentText(), QString());
    QVERIFY(combo.isEnabled());
    select({});
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
}

void TestColorComboBox::paletteStateDecidesThePalette()
{
    zvsiutSetDisplayBackground(0xFFFFFF); // index 7 is black there
    drawing().setCecolor(colorOf(indexWord(7)));
    for (const bool state : {true, false}) {
        document()->editingContext()->displayContext()->setPaletteState(state);
        ZvColorComboBox combo(true, nullptr);
        runMacro(L"_.REGEN ");
        QCOMPARE(combo.currentText(), state ? QStringLiteral("黑") : QStringLiteral("白"));
    }
    // with the state off the palette is the kernel's for no background, and that may be missing
    zvcmSetPaletteAvailable(false);
    ZvColorComboBox combo(true, nullptr);
    runMacro(L"_.REGEN ");
    QCOMPARE(combo.currentText(), QStringLiteral("白"));
    QCOMPARE(combo.GetCurrentColor(), QColor(0, 0, 0));
}

void TestColorComboBox::noticesAreFiltered_data()
{
    addNoticeRows({"BLOCKEDITOR", "CLAYER", "CECOLOR", "cecolor", "TILEMODE", "CELTYPE"});
    addObjectNotice("a line type", "line type", false, false);
}

void TestColorComboBox::noticesAreFiltered()
{
    QFETCH(QString, object);
    QFETCH(bool, passes);
    drawing().setCecolor(colorOf(indexWord(3)));
    ZvColorComboBox combo(false, nullptr);
    combo.pickFirstInfo->status = ZvGlobalUIReactorHelp::kInfoNoSelection;
    tellNotice(combo, drawing(),
               object == "line"            ? addLine()
                   : object == "line type" ? drawing().celtype()
                                           : drawing().clayer());
    QCOMPARE(combo.currentText(), passes ? QStringLiteral("绿") : QStringLiteral("ByLayer"));
}

void TestColorComboBox::withoutDocumentNothingHappens()
{
    ZvColorComboBox filled(true, nullptr);
    zvDocManagerPtr()->closeDocument(document());
    QVERIFY(!zvDocManagerPtr()->currentDocument());
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticeCommandEnded;
    filled.acceptUpdateUI(notice);
    filled.updateData(true);
    QCOMPARE(rowsOf(filled), kDefaultRows);
    QVERIFY(filled.isEnabled());

    ZvColorComboBox empty(true, nullptr);
    QCOMPARE(empty.count(), 0);
    empty.setViewStyle(31);
    QCOMPARE(empty.count(), 0);
    empty.showPopup();
    empty.hidePopup();
    QCOMPARE(empty.count(), 0);

    openAnother(); // still empty: the list is filled when it opens
    QCOMPARE(empty.count(), 0);
    empty.showPopup();
    empty.hidePopup();
    QCOMPARE(empty.count(), 12);
}

void TestColorComboBox::showingTellsNothing()
{
    ZvColorComboBox combo(true, nullptr);
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy color(&combo, &ZvColorComboBox::ColorItemChanged);
    drawing().setCecolor(colorOf(rgbWord(1, 2, 3)));
    runMacro(L"_.REGEN ");
    select({addLine()});
    select({});
    QCOMPARE(index.size(), 0);
    QCOMPARE(color.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

// ---- picking --------------------------------------------------------------------------------------------------------

void TestColorComboBox::pickIsToldWithItsColour()
{
    ZvColorComboBox combo(nullptr);
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    combo.setCurrentIndex(2);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<QColor>(), QColor(255, 0, 0));
    combo.setCurrentIndex(-1);
    QCOMPARE(spy.size(), 1);
}

void TestColorComboBox::pickWritesTheCurrentColour()
{
    ZvColorComboBox combo(true, nullptr);
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    struct Pick
    {
        int row;
        ZvCmEntityColor color;
    };
    for (const Pick &pick :
         {Pick{2, indexWord(1)}, Pick{1, word(ZvCm::kByBlock)}, Pick{8, indexWord(7)}, Pick{0, word(ZvCm::kByLayer)}}) {
        combo.setCurrentIndex(pick.row);
        QVERIFY(runCommands());
        QCOMPARE(currentColor().color(), pick.color.color());
        QCOMPARE(combo.currentIndex(), pick.row);
    }
    QCOMPARE(spy.size(), 4); // once each: what the drawing says back is not told
}

void TestColorComboBox::pickWritesTheSelection()
{
    ZvColorComboBox combo(true, nullptr);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId other = addLine();
    select({line});
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    QCOMPARE(colorOfEntity(line).color(), indexWord(1).color());
    QCOMPARE(colorOfEntity(other).color(), 0xC0000000u);
    QCOMPARE(currentColor().color(), 0xC0000000u);
    QCOMPARE(combo.currentText(), QStringLiteral("红"));
}

void TestColorComboBox::pickOfAForeignRowIsWritten()
{
    ZvColorComboBox combo(true, nullptr);
    ColorData foreign = formatColor(indexWord(30), zvsiutCurPalette(), ZvDbObjectId());
    foreign.type = kColorItemForeign;
    const int row = combo.AppendColorItem(foreign);
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    combo.setCurrentIndex(row);
    QVERIFY(runCommands());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<QColor>(), QColor(255, 127, 0));
    QCOMPARE(currentColor().color(), indexWord(30).color());
}

void TestColorComboBox::pickOfAnUnhookedOneWritesNothing()
{
    ZvColorComboBox combo(false, nullptr);
    combo.setCurrentIndex(2);
    combo.setCeColor(indexWord(5));
    QVERIFY(runCommands());
    QCOMPARE(currentColor().color(), 0xC0000000u);
}

void TestColorComboBox::pickIsOneUndoStep()
{
    ZvColorComboBox combo(true, nullptr);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId other = addLine();
    select({line, other});
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    QCOMPARE(colorOfEntity(other).color(), indexWord(1).color());
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(colorOfEntity(line).color(), 0xC0000000u);
    QCOMPARE(colorOfEntity(other).color(), 0xC0000000u);
}

void TestColorComboBox::entityOnALockedLayerIsLeftOut()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId locked = addLine();
    change<ZvDbEntity>(locked, [&](ZvDbEntity &entity) { entity.setLayer(layer); });
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
    ZvColorComboBox combo(true, nullptr);
    const MessageBoxes boxes;
    select({line, locked});
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    QCOMPARE(colorOfEntity(line).color(), indexWord(1).color());
    QCOMPARE(colorOfEntity(locked).color(), 0xC0000000u);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown().front().text, ZvString(L"在锁定图层上有 1 个对象未被更新。"));
    QCOMPARE(combo.currentText(), QString()); // they differ now
}

void TestColorComboBox::rowWithoutARecordShowsAMessage_data()
{
    QTest::addColumn<QVariant>("record");
    QTest::addColumn<int>("row");
    QTest::newRow("no record") << QVariant() << kSelectRow + 1;
    QTest::newRow("a number for a record") << QVariant(5) << kSelectRow + 1;
    QTest::newRow("a text for a record") << QVariant(QStringLiteral("红")) << kSelectRow + 1;
    QTest::newRow("no such row") << QVariant() << 99;
    QTest::newRow("a row below none") << QVariant() << -2;
}

void TestColorComboBox::rowWithoutARecordShowsAMessage()
{
    QFETCH(QVariant, record);
    QFETCH(int, row);
    ZvColorComboBox combo(true, nullptr);
    combo.addItem(QStringLiteral("a caller's row"), record);
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    QString text;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        if (auto *box = qobject_cast<QMessageBox *>(dialog))
            text = box->text();
        dialog->accept();
    });
    if (row < combo.count() && row >= 0)
        combo.setCurrentIndex(row);
    else
        combo.currentColorIndexChanged(row);
    QVERIFY(driver.finished());
    QCOMPARE(text, QStringLiteral("data err: index(%1)").arg(row));
    QCOMPARE(spy.size(), 0);
    QVERIFY(runCommands());
    QCOMPARE(currentColor().color(), 0xC0000000u);
}

void TestColorComboBox::keyboardGoesBackToTheDrawing_data()
{
    QTest::addColumn<int>("from"); // the row that the user leaves downwards
    QTest::newRow("after a pick") << 3;
    QTest::newRow("after a cancelled dialog") << kSelectRow - 1;
}

void TestColorComboBox::keyboardGoesBackToTheDrawing()
{
    QFETCH(int, from);
    QWidget window;
    QWidget view(&window);
    view.setFocusPolicy(Qt::StrongFocus);
    ZvColorComboBox combo(true, &window);
    const FocusView focus(&view);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(zevaWaitForActive(&window));
    combo.setCurrentIndex(from);
    QVERIFY(runCommands());
    combo.setFocus();
    ModalDriver driver;
    const bool opensDialog = from == kSelectRow - 1;
    if (opensDialog)
        driver.next([](QDialog *dialog) { dialog->reject(); });
    QTest::keyClick(&combo, Qt::Key_Down);
    QVERIFY(driver.finished());
    QCOMPARE(combo.currentIndex(), opensDialog ? from : from + 1);
    QCOMPARE(window.focusWidget(), &view);
    QVERIFY(opensDialog || view.hasFocus()); // after a dialog when the window is the active one again
    combo.setFocus();
    Q_EMIT combo.activated(combo.currentIndex()); // the same row once more, which changes nothing
    QCOMPARE(window.focusWidget(), &view);
    QVERIFY(runCommands());
}

// ---- opening the list -----------------------------------------------------------------------------------------------

void TestColorComboBox::listOpens_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<int>("state");
    for (const bool hooked : {true, false}) {
        for (int i = 0; i < int(std::size(kCommandStates)); ++i)
            QTest::addRow("%s, %s", hooked ? "hooked" : "unhooked", kCommandStates[i].name) << hooked << i;
    }
}

void TestColorComboBox::listOpens()
{
    QFETCH(bool, hooked);
    QFETCH(int, state);
    ZvColorComboBox combo(hooked, nullptr);
    combo.show();
    ListOpener opener(combo);
    opener.run(kCommandStates[state]);
    QCOMPARE(opener.active(), kCommandStates[state].active);
    QCOMPARE(opener.wasOpen(), !hooked || kCommandStates[state].opens);
}

void TestColorComboBox::openingRefillsTheHookedOne()
{
    for (const bool hooked : {true, false}) {
        ZvColorComboBox combo(hooked, nullptr);
        combo.show();
        combo.removeItem(5);
        combo.showPopup();
        combo.hidePopup();
        QCOMPARE(rowsOf(combo) == kDefaultRows, hooked);
    }
}

namespace {

/// What became of a list between two openings.
enum ListChange {
    kNothing,
    kRowRemoved,
    kRowOnTop,
    kRowAtTheEnd,
    kTextChanged,
    kSwatchChanged,
    kRecordChanged,
    kRecordGone,
    kAllGone,
    kModelOfTheCaller,
    kLayerRecoloured,
    kForegroundChanged,
};

/// Text, swatch and record of each row.
QVector<QVariantList> contentsOf(const QComboBox &combo)
{
    QVector<QVariantList> rows;
    for (int row = 0; row < combo.count(); ++row) {
        const ColorData data = dataOf(combo, row);
        rows << QVariantList{combo.itemText(row), swatchOf(combo, row),    data.name, data.color,
                             data.type,           data.entityColor.color()};
    }
    return rows;
}

} // namespace

void TestColorComboBox::openingPutsTheRowsRight_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("nothing has changed") << int(kNothing);
    QTest::newRow("a row is gone") << int(kRowRemoved);
    QTest::newRow("a row more on top") << int(kRowOnTop);
    QTest::newRow("rows more at the end") << int(kRowAtTheEnd);
    QTest::newRow("another text") << int(kTextChanged);
    QTest::newRow("another swatch") << int(kSwatchChanged);
    QTest::newRow("another record") << int(kRecordChanged);
    QTest::newRow("no record") << int(kRecordGone);
    QTest::newRow("no rows at all") << int(kAllGone);
    QTest::newRow("a model of the caller's") << int(kModelOfTheCaller);
    QTest::newRow("the layer has another colour") << int(kLayerRecoloured);
    QTest::newRow("the foreground is black") << int(kForegroundChanged);
}

void TestColorComboBox::openingPutsTheRowsRight()
{
    QFETCH(int, what);
    ZvColorComboBox combo(true, nullptr);
    combo.show();
    combo.appendCustomInfo(formatColor(indexWord(42), zvsiutCurPalette(), ZvDbObjectId()));
    combo.showPopup();
    combo.hidePopup();
    QStandardItemModel callers;
    {
        const QSignalBlocker showing(combo);
        switch (what) {
        case kRowRemoved:
            combo.removeItem(5);
            break;
        case kRowOnTop:
            combo.SetUseColorNone();
            break;
        case kRowAtTheEnd:
            combo.addItems({QStringLiteral("one"), QStringLiteral("two")});
            break;
        case kTextChanged:
            combo.setItemText(3, QStringLiteral("amber"));
            break;
        case kSwatchChanged:
            combo.setItemIcon(3, QIcon());
            break;
        case kRecordChanged:
            combo.setItemData(3, QVariant::fromValue(dataOf(combo, 4)));
            break;
        case kRecordGone:
            combo.setItemData(3, QVariant());
            break;
        case kAllGone:
            combo.clear();
            break;
        case kModelOfTheCaller:
            callers.appendRow(new QStandardItem(QStringLiteral("the caller's")));
            combo.setModel(&callers);
            break;
        case kLayerRecoloured:
            change<ZvDbLayerTableRecord>(drawing().clayer(),
                                         [](ZvDbLayerTableRecord &layer) { layer.setColor(colorOf(indexWord(3))); });
            break;
        case kForegroundChanged:
            zvsiutSetDisplayBackground(0xFFFFFF);
            break;
        default:
            break;
        }
    }
    combo.showPopup();
    combo.hidePopup();

    ZvColorComboBox fresh(true, nullptr);
    fresh.appendCustomInfo(formatColor(indexWord(42), zvsiutCurPalette(), ZvDbObjectId()));
    fresh.init(ZvCmColor(), false, ZvDbObjectId());
    QCOMPARE(rowsOf(combo), rowsOf(fresh));
    QCOMPARE(contentsOf(combo), contentsOf(fresh));
}

void TestColorComboBox::openingLeavesRowsThatStandAlone()
{
    ZvColorComboBox combo(true, nullptr);
    combo.show();
    const QPersistentModelIndex byLayer = combo.model()->index(0, 0);
    const QPersistentModelIndex white = combo.model()->index(8, 0);
    const QSignalSpy changed(combo.model(), &QAbstractItemModel::dataChanged);
    combo.showPopup();
    combo.hidePopup();
    QVERIFY(byLayer.isValid() && white.isValid());
    QCOMPARE(changed.size(), 0);
}

void TestColorComboBox::openingKeepsTheRowWithoutWriting()
{
    ZvColorComboBox combo(true, nullptr);
    combo.show();
    drawing().setCecolor(colorOf(indexWord(3)));
    runMacro(L"_.REGEN ");
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    combo.showPopup();
    QCOMPARE(combo.currentText(), QStringLiteral("绿"));
    combo.hidePopup();
    QVERIFY(!combo.signalsBlocked());
    QCOMPARE(index.size(), 0);
    QVERIFY(runCommands());
    QCOMPARE(currentColor().color(), indexWord(3).color());
}

void TestColorComboBox::blankStaysBlankOverOpening()
{
    ZvColorComboBox combo(true, nullptr);
    combo.show();
    const ZvDbObjectId first = addLine();
    const ZvDbObjectId second = addLine();
    change<ZvDbEntity>(first, [](ZvDbEntity &entity) { entity.setColor(colorOf(indexWord(1))); });
    select({first, second});
    QCOMPARE(combo.currentText(), QString());
    combo.showPopup();
    QCOMPARE(combo.currentIndex(), -1);
    combo.hidePopup();
    combo.setCurrentIndex(0); // ByLayer can be picked for both
    QVERIFY(runCommands());
    QCOMPARE(colorOfEntity(first).color(), 0xC0000000u);
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
}

void TestColorComboBox::blankShowsTheFirstRowOtherwise_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("row");
    QTest::newRow("no document known") << int(ZvGlobalUIReactorHelp::kInfoNoDocument) << 0;
    QTest::newRow("no selection") << int(ZvGlobalUIReactorHelp::kInfoNoSelection) << 0;
    QTest::newRow("one colour") << int(ZvGlobalUIReactorHelp::kInfoUniform) << 0;
    QTest::newRow("entities that differ") << int(ZvGlobalUIReactorHelp::kInfoMixed) << -1;
}

void TestColorComboBox::blankShowsTheFirstRowOtherwise()
{
    QFETCH(int, status);
    QFETCH(int, row);
    ZvColorComboBox combo(true, nullptr);
    combo.show();
    combo.pickFirstInfo->status = status;
    {
        const QSignalBlocker showing(combo);
        combo.clear(); // as without a document
    }
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    combo.showPopup();
    QCOMPARE(rowsOf(combo), kDefaultRows);
    QCOMPARE(combo.currentIndex(), row);
    combo.hidePopup();
    QCOMPARE(index.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

// ---- the dialog -----------------------------------------------------------------------------------------------------

/// Picks the dialog's row and works the dialog; what the combo shows afterwards.
QString TestColorComboBox::pickFromDialog(ZvColorComboBox &combo, const ModalDriver::Action &act)
{
    ModalDriver driver;
    driver.next(act);
    combo.setCurrentIndex(combo.count() - 1);
    if (!driver.finished())
        return QStringLiteral("the dialog did not come, or did not go");
    runCommands();
    return combo.currentText();
}

void TestColorComboBox::dialogIsAskedForTheOldColour_data()
{
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("text");
    QTest::newRow("by layer") << word(ZvCm::kByLayer) << 0 << "BYLAYER";
    QTest::newRow("by block") << word(ZvCm::kByBlock) << 0 << "BYBLOCK";
    QTest::newRow("red") << indexWord(1) << 0 << "红";
    QTest::newRow("an index") << indexWord(42) << 0 << "42";
    QTest::newRow("true colour, red first") << rgbWord(10, 20, 30) << 1 << "10,20,30";
    QTest::newRow("none is asked for as red") << word(ZvCm::kNone) << 0 << "红";
}

void TestColorComboBox::dialogIsAskedForTheOldColour()
{
    QFETCH(ZvCmEntityColor, color);
    QFETCH(int, tab);
    QFETCH(QString, text);
    change<ZvDbLayerTableRecord>(drawing().clayer(),
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(rgbWord(9, 8, 7))); });
    ZvColorComboBox combo(false, nullptr);
    combo.setCurrentIndex(5);
    const int row = combo.insertColorItem(3, QStringLiteral("mine"), colorOf(color));
    combo.setCurrentIndex(row);
    int shownTab = -1;
    QString shownText;
    QString swatch;
    bool isParent = false;
    pickFromDialog(combo, [&](QDialog *dialog) {
        shownTab = dialog->findChild<QTabWidget *>()->currentIndex();
        shownText = shownTab == 0 ? indexText(dialog)->text()
                                  : dialog->findChild<ZvTrueColorWnd *>()
                                        ->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly)
                                        ->text();
        dialog->findChild<QTabWidget *>()->setCurrentIndex(0);
        press(dialog, QStringLiteral("ByLayer(&L)"));
        swatch = dialog->findChild<ZvIndexColorWnd *>()->findChild<ZvColorLabel *>()->styleSheet();
        isParent = dialog->parentWidget() == &combo;
        dialog->reject();
    });
    QCOMPARE(shownTab, tab);
    QCOMPARE(shownText, text);
    QVERIFY(swatch.contains(QStringLiteral("rgb(9,8,7)"))); // the layer's colour is known to the dialog
    QVERIFY(isParent);
}

void TestColorComboBox::dialogIsAskedAsTold_data()
{
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::addColumn<unsigned>("style");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("forbids");
    QTest::newRow("by layer") << word(ZvCm::kByLayer) << 7u << 192 << 256 << false;
    QTest::newRow("by block") << word(ZvCm::kByBlock) << 7u << 193 << 0 << false;
    QTest::newRow("by index") << indexWord(42) << 7u << 195 << 42 << false;
    QTest::newRow("true colour, red lowest") << rgbWord(10, 20, 30) << 7u << 194 << packed(10, 20, 30) << false;
    QTest::newRow("none as red") << word(ZvCm::kNone) << 7u << 195 << 1 << false;
    QTest::newRow("by pen by the bytes of its word")
        << word(ZvCm::kByPen, 0x0A141E) << 7u << 196 << packed(10, 20, 30) << false;
    QTest::newRow("without by layer and by block") << indexWord(42) << 2u << 195 << 42 << true;
}

void TestColorComboBox::dialogIsAskedAsTold()
{
    QFETCH(ZvCmEntityColor, color);
    QFETCH(unsigned, style);
    QFETCH(int, method);
    QFETCH(int, value);
    QFETCH(bool, forbids);
    change<ZvDbLayerTableRecord>(drawing().clayer(),
                                 [](ZvDbLayerTableRecord &record) { record.setColor(colorOf(rgbWord(9, 8, 7))); });
    ZvColorComboBox combo(false, nullptr);
    combo.setViewStyle(style);
    ColorData mine = formatColor(color, zvsiutCurPalette(), ZvDbObjectId());
    mine.name = QStringLiteral("mine");
    combo.setCurrentIndex(combo.AppendColorItem(mine));
    const ColorDialogAnswer answer(2, 0, 0);
    combo.setCurrentIndex(combo.count() - 1);
    QCOMPARE(answer.asked.name, ZvString(L"ColorDialog"));
    QCOMPARE(answer.asked.parent, static_cast<void *>(static_cast<QWidget *>(&combo)));
    QVERIFY(!answer.asked.hasHelper);
    QStringList expected{QStringLiteral("clrMethod=%1").arg(method), QStringLiteral("selectClr=%1").arg(value),
                         QStringLiteral("backgroundColor=%1").arg(int(0xFF30281E)),
                         QStringLiteral("layerClr=%1").arg(packed(9, 8, 7))};
    if (forbids)
        expected << QStringLiteral("isByLayerEnable=0") << QStringLiteral("isByBLockEnable=0");
    QCOMPARE(answer.asked.params, expected);
}

void TestColorComboBox::cancelGoesBack()
{
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QVERIFY(runCommands());
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    const QString text = pickFromDialog(combo, [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QCOMPARE(text, QStringLiteral("绿"));
    QCOMPARE(combo.currentIndex(), 4);
    QCOMPARE(spy.size(), 0);
    QCOMPARE(currentColor().color(), indexWord(3).color());
    QVERIFY(!combo.signalsBlocked());
}

void TestColorComboBox::cancelGoesBackToTheLastPick()
{
    // What the drawing has shown in between was not picked: it is not gone back to, and not written over either.
    ZvColorComboBox combo(true, nullptr);
    drawing().setCecolor(colorOf(indexWord(5)));
    runMacro(L"_.REGEN ");
    QCOMPARE(combo.currentText(), QStringLiteral("蓝"));
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { dialog->reject(); }), QStringLiteral("ByLayer"));
    QCOMPARE(currentColor().color(), indexWord(5).color());
    runMacro(L"_.REGEN ");
    QCOMPARE(combo.currentText(), QStringLiteral("蓝"));
}

void TestColorComboBox::oldColourStandsBehindTheDialog()
{
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QString behind;
    pickFromDialog(combo, [&](QDialog *dialog) {
        behind = combo.currentText();
        dialog->reject();
    });
    QCOMPARE(behind, QStringLiteral("绿"));
}

void TestColorComboBox::dialogColourIsPicked_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("trueColor");
    QTest::addColumn<QString>("text");
    QTest::addColumn<ZvCmEntityColor>("color");
    QTest::addColumn<bool>("added");
    QTest::newRow("an index of the list") << "5" << false << "蓝" << indexWord(5) << false;
    QTest::newRow("an index that is not in the list") << "42" << false << "颜色 42" << indexWord(42) << true;
    QTest::newRow("256 is ByLayer") << "256" << false << "ByLayer" << word(ZvCm::kByLayer) << false;
    QTest::newRow("0 is an index") << "0" << false << "颜色 0" << word(ZvCm::kByBlock) << true;
    QTest::newRow("a true colour") << "10,20,30" << true << "RGB:10,20,30" << rgbWord(10, 20, 30) << true;
    QTest::newRow("red 1 alone is taken for index 1") << "1,0,0" << true << "红" << indexWord(1) << false;
    QTest::newRow("red 1 with blue as well") << "1,0,9" << true << "红" << indexWord(1) << false;
    QTest::newRow("green 1 alone is taken for ByLayer")
        << "0,1,0" << true << "ByLayer" << word(ZvCm::kByLayer) << false;
}

void TestColorComboBox::dialogColourIsPicked()
{
    QFETCH(QString, typed);
    QFETCH(bool, trueColor);
    QFETCH(QString, text);
    QFETCH(ZvCmEntityColor, color);
    QFETCH(bool, added);
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QVERIFY(runCommands());
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    QString shown;
    const auto record = connect(&combo, &ZvColorComboBox::ColorItemChanged, this, [&] { shown = combo.currentText(); });
    pickFromDialog(combo, [&](QDialog *dialog) {
        if (trueColor)
            typeRgbAndAccept(dialog, typed);
        else
            typeIndexAndAccept(dialog, typed);
    });
    disconnect(record);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(shown, text);
    QCOMPARE(spy.at(0).at(0).value<QColor>(), dataOf(combo, combo.findText(text)).color);
    QCOMPARE(currentColor().color(), color.color());
    QStringList expected = kDefaultRows;
    if (added)
        expected.insert(kSelectRow, text);
    QCOMPARE(rowsOf(combo), expected);
}

void TestColorComboBox::dialogPickByButtons()
{
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QVERIFY(runCommands());
    QCOMPARE(pickFromDialog(combo,
                            [](QDialog *dialog) {
                                press(dialog, QStringLiteral("ByBlock(&K)"));
                                press(dialog, QStringLiteral("确定"));
                            }),
             QStringLiteral("ByBlock"));
    QCOMPARE(currentColor().color(), 0xC1000000u);
    QCOMPARE(pickFromDialog(combo,
                            [](QDialog *dialog) {
                                press(dialog, QStringLiteral("ByLayer(&L)"));
                                press(dialog, QStringLiteral("确定"));
                            }),
             QStringLiteral("ByLayer"));
    QCOMPARE(currentColor().color(), 0xC0000000u);
    QCOMPARE(rowsOf(combo), kDefaultRows);
}

void TestColorComboBox::knownColourAddsNoRow()
{
    ZvColorComboBox combo(true, nullptr);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { typeRgbAndAccept(dialog, QStringLiteral("10,20,30")); }),
                 QStringLiteral("RGB:10,20,30"));
        QCOMPARE(combo.count(), kDefaultRows.size() + 1);
    }
}

void TestColorComboBox::placesToGoBackToAreFixed_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("picked");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("after"); // the next dialog is cancelled
    QTest::newRow("by layer goes back to the first row") << "ByLayer(&L)"
                                                         << "ByLayer" << 1 << "无";
    QTest::newRow("by block goes back to the second row") << "ByBlock(&K)"
                                                          << "ByBlock" << 2 << "ByLayer";
}

void TestColorComboBox::placesToGoBackToAreFixed()
{
    QFETCH(QString, button);
    QFETCH(QString, picked);
    QFETCH(int, row);
    QFETCH(QString, after);
    ZvColorComboBox combo(false, nullptr);
    combo.SetUseColorNone(); // in front of by layer and by block
    combo.setCurrentIndex(5);
    const auto choose = [&button](QDialog *dialog) {
        press(dialog, button);
        press(dialog, QStringLiteral("确定"));
    };
    QCOMPARE(pickFromDialog(combo, choose), picked);
    QCOMPARE(combo.currentIndex(), row);
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { dialog->reject(); }), after);
}

void TestColorComboBox::foundByValueGoesBackToTheColourBefore()
{
    ZvColorComboBox combo(false, nullptr);
    combo.setCurrentIndex(5);
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { typeIndexAndAccept(dialog, QStringLiteral("1")); }),
             QStringLiteral("红"));
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { dialog->reject(); }), QStringLiteral("青"));
    // found by its index, the row found is gone back to
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { typeRgbAndAccept(dialog, QStringLiteral("1,0,9")); }),
             QStringLiteral("红"));
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { dialog->reject(); }), QStringLiteral("红"));
}

void TestColorComboBox::forbiddenByViewStyle_data()
{
    QTest::addColumn<unsigned>("style");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("with by layer and by block") << 3u << true;
    QTest::newRow("without") << 2u << false;
}

void TestColorComboBox::forbiddenByViewStyle()
{
    QFETCH(unsigned, style);
    QFETCH(bool, allowed);
    ZvColorComboBox combo(false, nullptr);
    combo.setViewStyle(style);
    bool layerEnabled = !allowed;
    bool blockEnabled = !allowed;
    pickFromDialog(combo, [&](QDialog *dialog) {
        for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
            if (button->text() == QStringLiteral("ByLayer(&L)"))
                layerEnabled = button->isEnabled();
            if (button->text() == QStringLiteral("ByBlock(&K)"))
                blockEnabled = button->isEnabled();
        }
        dialog->reject();
    });
    QCOMPARE(layerEnabled, allowed);
    QCOMPARE(blockEnabled, allowed);
}

void TestColorComboBox::addedColourIsKeptAndWritten()
{
    ZvColorComboBox combo(true, nullptr);
    combo.show();
    pickFromDialog(combo, [](QDialog *dialog) { typeRgbAndAccept(dialog, QStringLiteral("10,20,30")); });
    QStringList expected = kDefaultRows;
    expected.insert(kSelectRow, QStringLiteral("RGB:10,20,30"));
    QCOMPARE(rowsOf(combo), expected);
    COMPARE_PICTURES(swatchOf(combo, kSelectRow), expectedSwatch(swatchSize(combo), qRgb(10, 20, 30)));
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentText(), QStringLiteral("RGB:10,20,30"));
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { dialog->reject(); }), QStringLiteral("RGB:10,20,30"));
}

void TestColorComboBox::answersOfAnotherDialog_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<ZvCmEntityColor>("written");
    const ZvCmEntityColor before = indexWord(3);
    QTest::newRow("none becomes black") << 1 << 200 << 7 << "RGB:0,0,0" << rgbWord(0, 0, 0);
    QTest::newRow("by pen becomes black") << 1 << 196 << 7 << "RGB:0,0,0" << rgbWord(0, 0, 0);
    QTest::newRow("no method at all becomes black") << 1 << -1 << 7 << "RGB:0,0,0" << rgbWord(0, 0, 0);
    QTest::newRow("by layer, whatever the value") << 1 << 192 << 5 << "ByLayer" << word(ZvCm::kByLayer);
    QTest::newRow("by block, whatever the value") << 1 << 193 << 5 << "ByBlock" << word(ZvCm::kByBlock);
    QTest::newRow("an index is cut to 16 bits") << 1 << 195 << 0x10005 << "蓝" << indexWord(5);
    QTest::newRow("true black") << 1 << 194 << 0 << "RGB:0,0,0" << rgbWord(0, 0, 0);
    QTest::newRow("bits above a true colour are cut")
        << 1 << 194 << 0x7F1E140A << "RGB:10,20,30" << rgbWord(10, 20, 30);
    QTest::newRow("cancelled with a colour") << 2 << 195 << 5 << "绿" << before;
    QTest::newRow("undecided with a colour") << -1 << 195 << 5 << "绿" << before;
    QTest::newRow("no result at all") << 0 << 195 << 5 << "绿" << before;
}

void TestColorComboBox::answersOfAnotherDialog()
{
    QFETCH(int, result);
    QFETCH(int, method);
    QFETCH(int, value);
    QFETCH(QString, text);
    QFETCH(ZvCmEntityColor, written);
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QVERIFY(runCommands());
    const ColorDialogAnswer answer(result, method, value);
    combo.setCurrentIndex(kSelectRow);
    QVERIFY(runCommands());
    QCOMPARE(combo.currentText(), text);
    QCOMPARE(currentColor().color(), written.color());
}

void TestColorComboBox::answersWithoutARowBecomeBlack_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    QTest::newRow("by layer") << 192 << 256;
    QTest::newRow("by block") << 193 << 0;
}

void TestColorComboBox::answersWithoutARowBecomeBlack()
{
    QFETCH(int, method);
    QFETCH(int, value);
    ZvColorComboBox combo(true, nullptr);
    combo.setViewStyle(2); // the colours and the dialog's row
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    const ColorDialogAnswer answer(1, method, value);
    combo.setCurrentIndex(combo.count() - 1);
    QVERIFY(runCommands());
    QCOMPARE(combo.currentText(), QStringLiteral("RGB:0,0,0"));
    QCOMPARE(currentColor().color(), rgbWord(0, 0, 0).color());
    // the row added is the one to go back to
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { dialog->reject(); }), QStringLiteral("RGB:0,0,0"));
}

void TestColorComboBox::missingDialogChangesNothing()
{
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QVERIFY(runCommands());
    zvrxEntryPoint(kZvRxUnloadModule);
    const QSignalSpy spy(&combo, &ZvColorComboBox::ColorItemChanged);
    combo.setCurrentIndex(kSelectRow);
    QCOMPARE(combo.currentIndex(), 4);
    QCOMPARE(spy.size(), 0);
    zvrxEntryPoint(kZvRxLoadModule);
    QCOMPARE(currentColor().color(), indexWord(3).color());
}

void TestColorComboBox::deletedWhileTheDialogRuns()
{
    auto *combo = new ZvColorComboBox(true, nullptr);
    ModalDriver driver;
    driver.next([&](QDialog *) { delete combo; });
    combo->currentColorIndexChanged(kSelectRow);
    QVERIFY(driver.finished());
}

void TestColorComboBox::noticeBehindTheDialogWritesNothing()
{
    ZvColorComboBox combo(true, nullptr);
    combo.setCurrentIndex(4);
    QVERIFY(runCommands());
    pickFromDialog(combo, [&](QDialog *dialog) {
        drawing().setCecolor(colorOf(indexWord(1)));
        CZvGlobalUIReactorHelp notice;
        notice.kind = kNoticeCommandEnded;
        bus().notifyUpdateUI(notice);
        dialog->reject();
    });
    QCOMPARE(currentColor().color(), indexWord(1).color());
}

// ---- a day at work --------------------------------------------------------------------------------------------------

void TestColorComboBox::journeyThroughTheList()
{
    QWidget window;
    ZvColorComboBox combo(true, &window);
    combo.resize(160, 30);
    window.resize(200, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const ZvDbObjectId line = addLine();
    select({line});
    // open the list by the mouse, walk it by the keyboard
    QTest::mouseClick(&combo, Qt::LeftButton);
    QTRY_VERIFY(combo.view()->isVisible());
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QTRY_VERIFY(!combo.view()->isVisible());
    QVERIFY(runCommands());
    QCOMPARE(combo.currentText(), QStringLiteral("红"));
    QCOMPARE(colorOfEntity(line).color(), indexWord(1).color());
    // a row of the open list by the mouse
    pickByMouse(combo, 6);
    QVERIFY(runCommands());
    QCOMPARE(combo.currentText(), QStringLiteral("蓝"));
    QCOMPARE(colorOfEntity(line).color(), indexWord(5).color());
    // through the dialog, and back again
    QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { typeRgbAndAccept(dialog, QStringLiteral("10,20,30")); }),
             QStringLiteral("RGB:10,20,30"));
    QCOMPARE(colorOfEntity(line).color(), rgbWord(10, 20, 30).color());
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(colorOfEntity(line).color(), indexWord(5).color());
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(colorOfEntity(line).color(), indexWord(1).color());
}

void TestColorComboBox::pickedColoursAreInTheSavedFile()
{
    const QTemporaryDir folder;
    const ZvString path((folder.path() + QStringLiteral("/colours.dxf")).toUtf8().constData());
    {
        ZvColorComboBox combo(true, nullptr);
        const ZvDbObjectId line = addLine();
        select({line});
        QCOMPARE(pickFromDialog(combo, [](QDialog *dialog) { typeRgbAndAccept(dialog, QStringLiteral("10,20,30")); }),
                 QStringLiteral("RGB:10,20,30"));
        select({});
        combo.setCurrentIndex(6);
        QVERIFY(runCommands());
        ZvDbFileReport report;
        QCOMPARE(zvDocManagerPtr()->saveDocument(document(), path, report), Zv::eOk);
    }
    zvDocManagerPtr()->closeDocument(document());
    ZvDbFileReport report;
    QVERIFY(zvDocManagerPtr()->openDocument(path, report));
    bus().enableUpdateUI(true);
    QCOMPARE(currentColor().color(), indexWord(5).color());
    ZvColorComboBox combo(true, nullptr);
    runMacro(L"_.REGEN ");
    QCOMPARE(combo.currentText(), QStringLiteral("蓝"));
    QVERIFY(runMacro(L"_.SELECT _ALL "));
    QTRY_COMPARE(combo.currentText(), QStringLiteral("RGB:10,20,30"));
}

ZEVA_TEST_MAIN(TestColorComboBox)
#include "tst_colorcombobox.moc"
