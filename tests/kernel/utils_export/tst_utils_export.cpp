// SPDX-License-Identifier: MIT
#include "picture.h"
#include "smalldisk.h"

#include "utils/zventityimage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cmath>

// Pictures, PDF and SVG of a drawing. PDF is read back as far as the tests need it: its page streams, unpacked.

class UtilsExportTest : public QObject
{
    Q_OBJECT

private slots:
    void pngHasTheSizeAsked_data();
    void pngHasTheSizeAsked();
    void pngFillsItsPicture();
    void pngHasTheBackgroundOfTheDisplay();
    void pdfIsWellFormed();
    void pdfIsA3AcrossInModelSpace();
    void pdfIsTheLayoutsPaperAtItsScale();
    void pdfTakesLinesOfOneLookAsOnePath();
    void pdfStrokesPatternsWithADashPen();
    void pdfHasLineWeightsInMillimetres();
    void pdfFillsTransparentAreas();
    void pdfKeepsCirclesAsCurves();
    void pdfLeavesOutDefinitionPoints();
    void svgIsWellFormed();
    void whatCannotBeWrittenIsSaidSo_data();
    void whatCannotBeWrittenIsSaidSo();
    void fullDiskIsSaidAndLeavesTheOldFile_data();
    void fullDiskIsSaidAndLeavesTheOldFile();
    void cancellingLeavesNoFileAndTheOldOneWhole();
    void progressRises();
    void everyCollectedDrawingIsExported_data();
    void everyCollectedDrawingIsExported();

private:
    QByteArray exported(ZvDbDatabase *database, const QString &name, int width = 0, int height = 0)
    {
        const QString path = m_folder.filePath(name);
        ZvString message;
        const Zv::ErrorStatus status = zvgiExport(database, path.toUtf8().constData(), message, width, height);
        if (status != Zv::eOk)
            qWarning("%s", message.toStdString().c_str());
        QFile file(path);
        return status == Zv::eOk && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The streams of a PDF, unpacked, one behind the other; empty when one is damaged.
    static QByteArray content(const QByteArray &pdf)
    {
        QByteArray text;
        int at = 0;
        while ((at = pdf.indexOf("stream\n", at)) >= 0) {
            const int start = at + 7;
            const int end = pdf.indexOf("\nendstream", start);
            const QByteArray packed = pdf.mid(start, end - start);
            QByteArray size(4, 0);
            qToBigEndian<quint32>(quint32(packed.size()) * 16 + 1024, size.data());
            const QByteArray plain = qUncompress(size + packed);
            if (plain.isEmpty())
                return QByteArray();
            text += plain;
            at = end + 10;
        }
        return text;
    }
    static QByteArrayList linesOf(const QByteArray &text, char ending)
    {
        QByteArrayList found;
        for (const QByteArray &line : text.split('\n')) {
            if (line.endsWith(ending))
                found.append(line);
        }
        return found;
    }

    QTemporaryDir m_folder;
};

void UtilsExportTest::pngHasTheSizeAsked_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QSize>("size");
    // The drawing is twice as wide as it is high.
    QTest::newRow("both") << 300 << 200 << QSize(300, 200);
    QTest::newRow("width only") << 300 << 0 << QSize(300, 150);
    QTest::newRow("height only") << 0 << 300 << QSize(600, 300);
    QTest::newRow("none") << 0 << 0 << QSize(1920, 960);
}

void UtilsExportTest::pngHasTheSizeAsked()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QSize, size);
    Picture picture;
    picture.addLine(0, 0, 200, 100);
    const QImage image = QImage::fromData(exported(picture.database, "size.png", width, height));
    QCOMPARE(image.size(), size);
}

void UtilsExportTest::pngFillsItsPicture()
{
    Picture picture;
    picture.addSolid({{1000, 1000, 0}, {1200, 1000, 0}, {1200, 1100, 0}, {1000, 1100, 0}}, 1);
    const QImage image
        = QImage::fromData(exported(picture.database, "fill.png", 400, 400)).convertToFormat(QImage::Format_RGB32);
    const QRect rect = inkedRect(image, image.pixel(0, 0));
    QVERIFY(rect.width() > 370 && rect.width() < 400);
    QVERIFY(std::abs(rect.height() * 2 - rect.width()) <= 2);
    QVERIFY(std::abs(rect.center().y() - 200) <= 1);
}

void UtilsExportTest::pngHasTheBackgroundOfTheDisplay()
{
    Picture picture;
    picture.addLine(0, 0, 200, 100);
    const unsigned before = zvsiutDisplayBackground();
    zvsiutSetDisplayBackground(0x0000FF); // red
    const QImage image = QImage::fromData(exported(picture.database, "background.png", 40, 40));
    zvsiutSetDisplayBackground(before);
    QCOMPARE(image.pixel(0, 0), qRgb(255, 0, 0));
}

void UtilsExportTest::pdfIsWellFormed()
{
    Picture picture;
    picture.addLine(0, 0, 200, 100);
    const QByteArray pdf = exported(picture.database, "form.pdf");
    QVERIFY(pdf.startsWith("%PDF-1.4"));
    QVERIFY(pdf.endsWith("%%EOF\n"));
    // Every object stands where the table says.
    const int table = pdf.mid(pdf.lastIndexOf("startxref") + 10).split('\n').first().toInt();
    QVERIFY(pdf.mid(table).startsWith("xref\n0 "));
    const QByteArrayList lines = pdf.mid(table).split('\n');
    const int count = lines[1].split(' ')[1].toInt();
    QVERIFY(count >= 5);
    for (int i = 1; i < count; ++i) {
        QCOMPARE(lines[2 + i].size() + 1, 20);
        QVERIFY(pdf.mid(lines[2 + i].left(10).toInt()).startsWith(QByteArray::number(i) + " 0 obj\n"));
    }
    QVERIFY(!content(pdf).isEmpty());
}

void UtilsExportTest::pdfIsA3AcrossInModelSpace()
{
    Picture picture;
    picture.addLine(0, 0, 200, 100);
    const QByteArray pdf = exported(picture.database, "a3.pdf");
    QVERIFY(pdf.contains("/MediaBox[0 0 1190.5512 841.8898]"));
    // 200 units fill the sheet's width but for ten millimetres on each side.
    const QByteArrayList moves = linesOf(content(pdf), 'm');
    QCOMPARE(moves.size(), 2); // "cm" is one of them
    const double margin = 10 * 72 / 25.4 * 1000;
    QVERIFY(std::abs(moves[1].split(' ')[0].toDouble() - margin) < 2);
}

void UtilsExportTest::pdfIsTheLayoutsPaperAtItsScale()
{
    Picture picture;
    // A2 across with margins of 5 and 7 mm; the paper's origin is the corner within them.
    const QByteArray dxf
        = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$TILEMODE\n70\n0\n0\nENDSEC\n"
          "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nBLOCK_RECORD\n5\n1\n330\n0\n100\nAcDbSymbolTable\n70\n2\n"
          "0\nBLOCK_RECORD\n5\n20\n330\n1\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n2\n*Model_"
          "Space\n340\n31\n"
          "0\nBLOCK_RECORD\n5\n21\n330\n1\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n2\n*Paper_"
          "Space\n340\n32\n"
          "0\nENDTAB\n0\nENDSEC\n"
          "0\nSECTION\n2\nBLOCKS\n"
          "0\nBLOCK\n5\n22\n330\n20\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockBegin\n2\n*Model_"
          "Space\n70\n0\n10\n0\n20\n0\n30\n0\n0\nENDBLK\n5\n23\n330\n20\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockEnd\n"
          "0\nBLOCK\n5\n24\n330\n21\n100\nAcDbEntity\n67\n1\n8\n0\n100\nAcDbBlockBegin\n2\n*Paper_"
          "Space\n70\n0\n10\n0\n20\n0\n30\n0\n0\nENDBLK\n5\n25\n330\n21\n100\nAcDbEntity\n67\n1\n8\n0\n100\nAcDbBlockEn"
          "d\n"
          "0\nENDSEC\n"
          "0\nSECTION\n2\nENTITIES\n0\nLINE\n5\n40\n330\n21\n100\nAcDbEntity\n67\n1\n8\n0\n100\nAcDbLine\n10\n0\n20\n0"
          "\n30\n0\n11\n100\n21\n0\n31\n0\n0\nENDSEC\n"
          "0\nSECTION\n2\nOBJECTS\n0\nDICTIONARY\n5\nC\n330\n0\n100\nAcDbDictionary\n281\n1\n3\nACAD_LAYOUT\n350\n30\n"
          "0\nDICTIONARY\n5\n30\n330\nC\n100\nAcDbDictionary\n281\n1\n3\nModel\n350\n31\n3\nSheet\n350\n32\n"
          "0\nLAYOUT\n5\n31\n330\n30\n100\nAcDbPlotSettings\n70\n1024\n100\nAcDbLayout\n1\nModel\n70\n1\n71\n0\n330\n20"
          "\n"
          "0\nLAYOUT\n5\n32\n330\n30\n100\nAcDbPlotSettings\n40\n5\n41\n7\n42\n5\n43\n7\n44\n594\n45\n420\n142\n1\n143"
          "\n1\n70\n0\n72\n1\n73\n0\n74\n5\n100\nAcDbLayout\n1\nSheet\n70\n1\n71\n1\n330\n21\n"
          "0\nENDSEC\n0\nEOF\n";
    ZvDbFileReport report;
    picture.database = ZvDbDatabase::create();
    QVERIFY2(picture.database->readStream(dxf.constData(), std::size_t(dxf.size()), report) == Zv::eOk,
             report.message.toStdString().c_str());
    QVERIFY(!picture.database->tilemode());
    const QByteArray pdf = exported(picture.database, "paper.pdf");
    QVERIFY(pdf.contains("/MediaBox[0 0 1683.7795 1190.5512]"));
    const double unit = 72 / 25.4 * 1000;
    const QByteArrayList ends = linesOf(content(pdf), 'l');
    QCOMPARE(ends.size(), 1);
    QVERIFY(std::abs(ends[0].split(' ')[0].toDouble() - (5 + 100) * unit) < 2);
    QVERIFY(std::abs(ends[0].split(' ')[1].toDouble() - (420 - 7) * unit) < 2);
}

void UtilsExportTest::pdfTakesLinesOfOneLookAsOnePath()
{
    Picture picture;
    for (int i = 0; i < 300; ++i)
        picture.addLine(i, 0, i, 100, i % 2 + 1); // two colours in turn
    const QByteArray text = content(exported(picture.database, "batch.pdf"));
    QCOMPARE(linesOf(text, 'l').size(), 300);
    QCOMPARE(linesOf(text, 'S').size(), 2);
}

void UtilsExportTest::pdfStrokesPatternsWithADashPen()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("dashed", std::vector<double>{10.0, -5.0});
    for (int i = 0; i < 10; ++i) {
        const ZvDbObjectId line = picture.addLine(0, 10 * i, 400, 10 * i);
        change<ZvDbLine>(line, [&](ZvDbLine &entity) { entity.setLinetype(type); });
    }
    const QByteArray text = content(exported(picture.database, "dash.pdf"));
    // A unit of the drawing is a millimetre on the sheet: 400 of 420 less two margins of 10.
    const int dash = int(std::lround(10 * 72 / 25.4 * 1000));
    const int gap = int(std::lround(5 * 72 / 25.4 * 1000));
    QVERIFY2(text.contains("[" + QByteArray::number(dash) + " " + QByteArray::number(gap) + " ]0 d"), text.constData());
    QCOMPARE(linesOf(text, 'l').size(), 10); // not a line for each dash
    QCOMPARE(linesOf(text, 'S').size(), 1);
}

void UtilsExportTest::pdfHasLineWeightsInMillimetres()
{
    Picture picture;
    const ZvDbObjectId line = picture.addLine(0, 0, 200, 100);
    change<ZvDbLine>(line, [](ZvDbLine &entity) { entity.setLineWeight(ZvDb::kLnWt100); });
    const QByteArray text = content(exported(picture.database, "weight.pdf"));
    QVERIFY(text.contains(QByteArray::number(int(std::lround(72 / 25.4 * 1000))) + " w\n"));
}

void UtilsExportTest::pdfFillsTransparentAreas()
{
    Picture picture;
    const ZvDbObjectId id = picture.addSolid({{20, 20, 0}, {80, 20, 0}, {80, 80, 0}, {20, 80, 0}}, 1);
    change<ZvDbSolid>(id, [](ZvDbSolid &solid) {
        ZvCmTransparency half;
        half.setMethod(ZvCmTransparency::kByAlpha);
        half.setAlpha(128);
        solid.setTransparency(half);
    });
    const QByteArray pdf = exported(picture.database, "alpha.pdf");
    const QByteArray text = content(pdf);
    QVERIFY(text.contains("/A128 gs\n"));
    QVERIFY(text.contains("1.0000 0.0000 0.0000 rg\n"));
    QVERIFY(text.contains("f*\n"));
    QVERIFY(pdf.contains("/A128<</CA 0.5020/ca 0.5020>>"));
}

void UtilsExportTest::pdfKeepsCirclesAsCurves()
{
    Picture picture;
    auto *circle = new ZvDbCircle(ZvGePoint3d(50, 50, 0), ZvGeVector3d(0, 0, 1), 30.0);
    circle->setLayer(picture.database->layerZero());
    picture.add(circle);
    const QByteArray text = content(exported(picture.database, "circle.pdf"));
    QCOMPARE(linesOf(text, 'c').size(), 4);
    QCOMPARE(linesOf(text, 'l').size(), 0);
    QCOMPARE(linesOf(text, 'h').size(), 1);
}

void UtilsExportTest::pdfLeavesOutDefinitionPoints()
{
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("DefPoints", 7);
    picture.addLine(0, 0, 200, 100, 256, layer);
    picture.addLine(0, 0, 100, 100);
    QCOMPARE(linesOf(content(exported(picture.database, "points.pdf")), 'l').size(), 1);
}

void UtilsExportTest::svgIsWellFormed()
{
    Picture picture;
    picture.addLine(0, 0, 200, 100, 1);
    const QByteArray svg = exported(picture.database, "form.svg");
    QVERIFY(svg.contains("<svg"));
    QVERIFY(svg.contains("viewBox=\"0 0 4200 2970\""));
    QVERIFY(svg.contains("width=\"420mm\""));
    QVERIFY(svg.contains("#ff0000"));
    QVERIFY(svg.trimmed().endsWith("</svg>"));
}

void UtilsExportTest::whatCannotBeWrittenIsSaidSo_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::newRow("unknown ending") << m_folder.filePath("picture.bmp") << int(Zv::eInvalidInput);
    QTest::newRow("no ending") << m_folder.filePath("picture") << int(Zv::eInvalidInput);
    QTest::newRow("no such folder") << "/no/such/folder/picture.pdf" << int(Zv::eFileAccess);
    QTest::newRow("no such folder, svg") << "/no/such/folder/picture.svg" << int(Zv::eFileAccess);
}

void UtilsExportTest::whatCannotBeWrittenIsSaidSo()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    Picture picture;
    picture.addLine(0, 0, 200, 100);
    ZvString message;
    QCOMPARE(int(zvgiExport(picture.database, path.toUtf8().constData(), message)), status);
    QVERIFY(!message.isEmpty());
    QVERIFY(!QFile::exists(path));
    QCOMPARE(int(zvgiExport(nullptr, path.toUtf8().constData(), message)), int(Zv::eNoDatabase));
    QCOMPARE(int(zvgiExport(picture.database, m_folder.filePath("large.png").toUtf8().constData(), message, 20000, 10)),
             int(Zv::eInvalidInput));
}

void UtilsExportTest::fullDiskIsSaidAndLeavesTheOldFile_data()
{
    QTest::addColumn<QString>("ending");
    QTest::addColumn<int>("lines");
    for (const char *ending : {"pdf", "png", "svg"}) {
        QTest::newRow(qPrintable(QString("a small %1").arg(ending))) << ending << 1;
        QTest::newRow(qPrintable(QString("a large %1").arg(ending))) << ending << 5000;
    }
}

void UtilsExportTest::fullDiskIsSaidAndLeavesTheOldFile()
{
    QFETCH(QString, ending);
    QFETCH(int, lines);
    Picture picture;
    for (int i = 0; i < lines; ++i)
        picture.addLine(i, 0, i % 7, 100);
    const QString path = m_folder.filePath(QStringLiteral("disk.") + ending);
    ZvString message;
    QCOMPARE(zvgiExport(picture.database, path.toUtf8().constData(), message), Zv::eOk);
    QFile file(path);
    const qint64 size = file.size();
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
    file.close();
    for (const qint64 room : {size / 2, size - 1}) {
        {
            const SmallDisk disk{rlim_t(room)};
            QCOMPARE(zvgiExport(picture.database, path.toUtf8().constData(), message), Zv::eFileAccess);
        }
        QVERIFY(!message.isEmpty());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("old"));
        file.close();
        QCOMPARE(QDir(m_folder.path()).entryList({"disk.*"}, QDir::Files).size(), 1);
    }
    QVERIFY(file.remove());
}

namespace {
class Progress : public ZvDbProgress
{
public:
    bool progress(double fraction) override
    {
        fractions.append(fraction);
        return !cancels;
    }
    QVector<double> fractions;
    bool cancels = false;
};
} // namespace

void UtilsExportTest::cancellingLeavesNoFileAndTheOldOneWhole()
{
    Picture picture;
    for (int i = 0; i < 10000; ++i)
        picture.addLine(i, 0, i, 100);
    for (const char *ending : {"pdf", "png", "svg"}) {
        const QString path = m_folder.filePath(QStringLiteral("cancel.") + ending);
        Progress progress;
        progress.cancels = true;
        ZvString message;
        QCOMPARE(zvgiExport(picture.database, path.toUtf8().constData(), message, 0, 0, &progress), Zv::eCancelled);
        QVERIFY(!QFile::exists(path));
        QVERIFY(!message.isEmpty());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("old");
        file.close();
        QCOMPARE(zvgiExport(picture.database, path.toUtf8().constData(), message, 0, 0, &progress), Zv::eCancelled);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("old"));
    }
    QCOMPARE(picture.database->openObjectCount(), 0);
    QCOMPARE(QDir(m_folder.path()).entryList({"cancel.*"}, QDir::Files).size(), 3); // nothing beside them either
}

void UtilsExportTest::progressRises()
{
    Picture picture;
    for (int i = 0; i < 20000; ++i)
        picture.addLine(i, 0, i, 100);
    Progress progress;
    ZvString message;
    QCOMPARE(
        zvgiExport(picture.database, m_folder.filePath("progress.pdf").toUtf8().constData(), message, 0, 0, &progress),
        Zv::eOk);
    QVERIFY(progress.fractions.size() >= 3);
    for (int i = 0; i < progress.fractions.size(); ++i) {
        QVERIFY(progress.fractions[i] >= 0.0 && progress.fractions[i] <= 1.0);
        QVERIFY(i == 0 || progress.fractions[i] >= progress.fractions[i - 1]);
    }
}

void UtilsExportTest::everyCollectedDrawingIsExported_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &folderName : {QStringLiteral(ZEVA_SAMPLES_DIR), QStringLiteral(ZEVA_DRAWINGS_DIR "/dxf")}) {
        const QDir folder(folderName);
        for (const QString &file : folder.entryList({"*.dxf"}, QDir::Files))
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }
}

void UtilsExportTest::everyCollectedDrawingIsExported()
{
    QFETCH(QString, path);
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(database->readFile(path.toUtf8().constData(), report), Zv::eOk);
    QVERIFY(!content(exported(database, "drawing.pdf")).isEmpty());
    QCOMPARE(QImage::fromData(exported(database, "drawing.png", 200, 100)).size(), QSize(200, 100));
    QVERIFY(exported(database, "drawing.svg").contains("</svg>"));
    QCOMPARE(database->openObjectCount(), 0);
    QVERIFY(!database->isModified());
}

QTEST_MAIN(UtilsExportTest)
#include "tst_utils_export.moc"
