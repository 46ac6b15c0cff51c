// SPDX-License-Identifier: MIT
#ifndef DRAWINGTEXTS_H
#define DRAWINGTEXTS_H

#include <QByteArray>

// Drawing files as they stand on disk, for DrawingTest::openDrawing().

// What programs cannot make: records of an external reference, hidden layers, names that stand twice.
inline const char kDrawing[]
    = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
      "0\nSECTION\n2\nTABLES\n"
      "0\nTABLE\n2\nLAYER\n70\n9\n"
      "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
      "0\nLAYER\n2\nwalls\n70\n5\n62\n-3\n6\nCONTINUOUS\n"
      "0\nLAYER\n2\nDoors\n70\n0\n62\n5\n6\nCONTINUOUS\n"
      "0\nLAYER\n2\n*Helper\n70\n0\n62\n1\n6\nCONTINUOUS\n"
      "0\nLAYER\n2\nHouse|Walls\n70\n48\n62\n3\n6\nCONTINUOUS\n"
      "0\nENDTAB\n"
      "0\nTABLE\n2\nSTYLE\n70\n3\n"
      "0\nSTYLE\n2\nSTANDARD\n70\n0\n40\n0.0\n41\n1.0\n50\n0.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
      "0\nSTYLE\n2\nTall\n70\n4\n40\n3.5\n41\n0.8\n50\n15.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
      "0\nSTYLE\n2\nTall\n70\n0\n40\n9.5\n41\n1.0\n50\n0.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
      "0\nSTYLE\n2\n\n70\n1\n40\n0.0\n41\n1.0\n50\n0.0\n71\n0\n42\n2.5\n3\nltypeshp.shx\n4\n\n"
      "0\nSTYLE\n2\nHouse|Tall\n70\n48\n40\n0.0\n41\n1.0\n50\n0.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
      "0\nENDTAB\n"
      "0\nTABLE\n2\nDIMSTYLE\n70\n3\n"
      "0\nDIMSTYLE\n2\nSTANDARD\n70\n0\n"
      "0\nDIMSTYLE\n2\nHouse|Fine\n70\n48\n"
      "0\nDIMSTYLE\n2\nZulu\n70\n0\n"
      "0\nDIMSTYLE\n2\nZulu\n70\n0\n"
      "0\nENDTAB\n"
      "0\nTABLE\n2\nUCS\n70\n2\n"
      "0\nUCS\n2\nSlope\n70\n0\n10\n1.0\n20\n2.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n12\n0.0\n22\n0.0\n32\n1.0\n"
      "0\nUCS\n2\nHouse|Roof\n70\n48\n10\n1.0\n20\n2.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n12\n0.0\n22\n0.0\n32\n1.0\n"
      "0\nENDTAB\n"
      "0\nTABLE\n2\nVIEW\n70\n3\n"
      "0\nVIEW\n2\nGARDEN\n70\n0\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n11\n0.0\n21\n0.0\n31\n1.0\n12\n0.0\n22\n0."
      "0\n32\n0.0\n"
      "0\nVIEW\n2\nSHEET\n70\n1\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n11\n0.0\n21\n0.0\n31\n1.0\n12\n0.0\n22\n0."
      "0\n32\n0.0\n"
      "0\nVIEW\n2\nHouse|View\n70\n48\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n11\n0.0\n21\n0.0\n31\n1.0\n12\n0.0\n22\n0."
      "0\n32\n0.0\n"
      "0\nENDTAB\n"
      "0\nENDSEC\n"
      "0\nSECTION\n2\nBLOCKS\n"
      "0\nBLOCK\n8\n0\n2\nWINDOW\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\nWINDOW\n0\nENDBLK\n8\n0\n"
      "0\nBLOCK\n8\n0\n2\nDoor\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\nDoor\n0\nENDBLK\n8\n0\n"
      "0\nBLOCK\n8\n0\n2\n*U1\n70\n1\n10\n0.0\n20\n0.0\n30\n0.0\n3\n*U1\n0\nENDBLK\n8\n0\n"
      "0\nBLOCK\n8\n0\n2\nHouse|Sink\n70\n48\n10\n0.0\n20\n0.0\n30\n0.0\n3\nHouse|Sink\n0\nENDBLK\n8\n0\n"
      "0\nBLOCK\n8\n0\n2\nHouse\n70\n4\n10\n0.0\n20\n0.0\n30\n0.0\n3\nHouse\n1\nhouse.dxf\n0\nENDBLK\n8\n0\n"
      "0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n"
      "0\nINSERT\n8\n0\n2\nDoor\n10\n0.0\n20\n0.0\n30\n0.0\n"
      "0\nENDSEC\n"
      "0\nSECTION\n2\nOBJECTS\n"
      "0\nDICTIONARY\n5\nA0\n330\n0\n100\nAcDbDictionary\n"
      "3\nACAD_MATERIAL\n350\nA1\n3\nACAD_PLOTSTYLENAME\n350\nA2\n3\nACAD_TABLESTYLE\n350\nA3\n"
      "3\nACAD_MLEADERSTYLE\n350\nA4\n"
      // In each dictionary: an entry without a name, one whose object is missing, and one of a name that stands twice.
      "0\nDICTIONARY\n5\nA1\n330\nA0\n100\nAcDbDictionary\n"
      "3\nwood\n350\nB1\n3\n\n350\nB2\n3\nLost\n350\nFFF\n3\nBrick\n350\nB3\n3\nwood\n350\nB4\n"
      "0\nDICTIONARY\n5\nA2\n330\nA0\n100\nAcDbDictionary\n"
      "3\nthick\n350\nC1\n3\n\n350\nC2\n3\nLost\n350\nFFF\n3\nNormal\n350\nC3\n3\nthick\n350\nC4\n"
      "0\nDICTIONARY\n5\nA3\n330\nA0\n100\nAcDbDictionary\n"
      "3\nstriped\n350\nD1\n3\n\n350\nD2\n3\nLost\n350\nFFF\n3\nPlain\n350\nD3\n3\nstriped\n350\nD4\n"
      "0\nDICTIONARY\n5\nA4\n330\nA0\n100\nAcDbDictionary\n"
      "3\nred\n350\nE1\n3\n\n350\nE2\n3\nLost\n350\nFFF\n3\nBlue\n350\nE3\n3\nred\n350\nE4\n"
      "0\nMATERIAL\n5\nB1\n330\nA1\n100\nAcDbMaterial\n1\nwood\n0\nMATERIAL\n5\nB2\n330\nA1\n100\nAcDbMaterial\n1\n\n"
      "0\nMATERIAL\n5\nB3\n330\nA1\n100\nAcDbMaterial\n1\nBrick\n0\nMATERIAL\n5\nB4\n330\nA1\n100\nAcDbMaterial\n1\nwoo"
      "d\n"
      "0\nACDBPLACEHOLDER\n5\nC1\n330\nA2\n0\nACDBPLACEHOLDER\n5\nC2\n330\nA2\n"
      "0\nACDBPLACEHOLDER\n5\nC3\n330\nA2\n0\nACDBPLACEHOLDER\n5\nC4\n330\nA2\n"
      "0\nTABLESTYLE\n5\nD1\n102\n{ACAD_XDICTIONARY\n360\nF0\n102\n}\n330\nA3\n100\nAcDbTableStyle\n3\nstriped\n"
      "0\nTABLESTYLE\n5\nD2\n330\nA3\n100\nAcDbTableStyle\n3\n\n0\nTABLESTYLE\n5\nD3\n330\nA3\n100\nAcDbTableStyle\n3\n"
      "\n"
      "0\nTABLESTYLE\n5\nD4\n330\nA3\n100\nAcDbTableStyle\n3\n\n"
      "0\nMLEADERSTYLE\n5\nE1\n330\nA4\n100\nAcDbMLeaderStyle\n0\nMLEADERSTYLE\n5\nE2\n330\nA4\n100\nAcDbMLeaderStyle\n"
      "0\nMLEADERSTYLE\n5\nE3\n330\nA4\n100\nAcDbMLeaderStyle\n0\nMLEADERSTYLE\n5\nE4\n330\nA4\n100\nAcDbMLeaderStyle\n"
      // The first table style has cell styles of its own.
      "0\nDICTIONARY\n5\nF0\n330\nD1\n100\nAcDbDictionary\n280\n1\n3\nACAD_ROUNDTRIP_2008_TABLESTYLE_"
      "CELLSTYLEMAP\n360\nF1\n"
      "0\nCELLSTYLEMAP\n5\nF1\n330\nF0\n100\nAcDbCellStyleMap\n90\n3\n"
      "300\nCELLSTYLE\n1\nCELLSTYLE_BEGIN\n90\n101\n91\n1\n300\nalpha\n309\nCELLSTYLE_END\n"
      "300\nCELLSTYLE\n1\nCELLSTYLE_BEGIN\n90\n102\n91\n1\n300\nBeta\n309\nCELLSTYLE_END\n"
      "300\nCELLSTYLE\n1\nCELLSTYLE_BEGIN\n90\n103\n91\n1\n300\nALPHA\n309\nCELLSTYLE_END\n"
      "0\nENDSEC\n0\nEOF\n";

/// A drawing of entities only.
inline QByteArray drawingOf(const QByteArray &blocks, const QByteArray &entities)
{
    return QByteArrayLiteral("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n")
        + blocks + QByteArrayLiteral("0\nENDSEC\n0\nSECTION\n2\nENTITIES\n") + entities
        + QByteArrayLiteral("0\nENDSEC\n0\nEOF\n");
}

/// A drawing of one table.
inline QByteArray drawingOfTable(const QByteArray &name, const QByteArray &records)
{
    return QByteArrayLiteral(
               "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n0\nTABLE\n2\n")
        + name + QByteArrayLiteral("\n70\n9\n") + records + QByteArrayLiteral("0\nENDTAB\n0\nENDSEC\n0\nEOF\n");
}

inline QByteArray hatch(const QByteArray &pattern, bool onPaper = false)
{
    return QByteArrayLiteral("0\nHATCH\n100\nAcDbEntity\n") + (onPaper ? "67\n1\n" : "")
        + QByteArrayLiteral("8\n0\n100\nAcDbHatch\n10\n0.0\n20\n0.0\n30\n0.0\n210\n0.0\n220\n0.0\n230\n1.0\n2\n")
        + pattern + QByteArrayLiteral("\n70\n1\n71\n0\n91\n0\n75\n0\n76\n1\n98\n0\n");
}

#endif
