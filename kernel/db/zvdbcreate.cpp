// SPDX-License-Identifier: MIT
#include "db/zvdbdatabase.h"

#include "zvdbdatabase_p.h"
#include "zvdbdimvars_p.h"

/// Makes what every drawing has, as ordinary objects with handles, without notices and undo.
class ZvDbDrawingMaker
{
public:
    ZvDbDrawingMaker(ZvDbDatabasePrivate &database, bool metric) : d(database), m_metric(metric) { }

    void make()
    {
        makeTables();
        d.registerApplication(L"ACAD");
        makeLinetypes();
        makeDictionaries();
        makeTextStyles();
        makeDimStyles();
        makeLayers();
        makeViewport();
        makeLayouts();
        makeStyles();
    }

private:
    void makeTables()
    {
        ZvDbSymbolTable *const made[kTableCount] = {
            new ZvDbViewportTable,  new ZvDbLinetypeTable, new ZvDbLayerTable,
            new ZvDbTextStyleTable, new ZvDbViewTable,     new ZvDbUCSTable,
            new ZvDbRegAppTable,    new ZvDbDimStyleTable, new ZvDbBlockTable,
        };
        for (int i = 0; i < kTableCount; ++i)
            d.tables[i] = d.adopt(made[i], 0);
    }

    template <class T> T *addRecord(ZvDbTableKind kind, T *record, const wchar_t *name)
    {
        ZvDbObjectAccess::setName(*record, name);
        const std::uint32_t index = d.adopt(record, d.tables[kind]);
        ZvDbObjectAccess::addToTable(*d.table(kind), name, index);
        return record;
    }

    void makeLinetypes()
    {
        addRecord(kLinetypeTable, new ZvDbLinetypeTableRecord, L"ByBlock");
        addRecord(kLinetypeTable, new ZvDbLinetypeTableRecord, L"ByLayer");
        ZvDbLinetypeTableRecord *continuous = new ZvDbLinetypeTableRecord;
        continuous->setComments(L"Solid line");
        m_continuous = addRecord(kLinetypeTable, continuous, L"Continuous")->objectId();
    }

    ZvDbDictionary *addDictionary(const wchar_t *name)
    {
        ZvDbDictionary *dictionary = new ZvDbDictionary;
        addEntry(*m_root, dictionary, name);
        return dictionary;
    }

    ZvDbObjectId addEntry(ZvDbDictionary &dictionary, ZvDbObject *object, const wchar_t *name)
    {
        if (ZvDbNamedObject *named = zvrxCast<ZvDbNamedObject>(object))
            ZvDbObjectAccess::setName(*named, name);
        const ZvDbObjectId id = d.idAt(d.adopt(object, dictionary.objectId().index()));
        ZvDbObjectAccess::addToDictionary(dictionary, name, id);
        return id;
    }

    void makeDictionaries()
    {
        m_root = new ZvDbDictionary;
        d.rootDictionary = d.adopt(m_root, 0);
        addDictionary(L"ACAD_GROUP");
        m_layouts = addDictionary(L"ACAD_LAYOUT");
        ZvDbDictionary *materials = addDictionary(L"ACAD_MATERIAL");
        m_mleaderStyles = addDictionary(L"ACAD_MLEADERSTYLE");
        addDictionary(L"ACAD_PLOTSETTINGS");
        ZvDbDictionary *plotStyles = addDictionary(L"ACAD_PLOTSTYLENAME");
        m_tableStyles = addDictionary(L"ACAD_TABLESTYLE");

        addEntry(*materials, new ZvDbMaterial, L"ByBlock");
        addEntry(*materials, new ZvDbMaterial, L"ByLayer");
        m_globalMaterial = addEntry(*materials, new ZvDbMaterial, L"Global");
        m_normalPlotStyle = addEntry(*plotStyles, new ZvDbPlaceHolder, L"Normal");
        ZvDbObjectAccess::makeDictionaryWithDefault(*plotStyles, m_normalPlotStyle);
    }

    void makeTextStyles()
    {
        ZvDbTextStyleTableRecord *standard = new ZvDbTextStyleTableRecord;
        standard->setFontFileName(L"txt");
        m_textStyle = addRecord(kTextStyleTable, standard, L"Standard")->objectId();

        ZvDbTextStyleTableRecord *annotative = new ZvDbTextStyleTableRecord;
        annotative->setFontFileName(L"txt");
        ZvDbObjectAccess::makeAnnotative(*annotative);
        addRecord(kTextStyleTable, annotative, L"Annotative");
    }

    void makeDimStyles()
    {
        ZvDbDimStyleTableRecord *standard = new ZvDbDimStyleTableRecord;
        standard->setIdValue("DIMTXSTY", m_textStyle);
        ZvDbObjectId current = addRecord(kDimStyleTable, standard, L"Standard")->objectId();
        if (m_metric) {
            ZvDbDimStyleTableRecord *iso = new ZvDbDimStyleTableRecord;
            int count = 0;
            const ZvDbDimVariable *variables = zvdbDimVariables(count);
            for (int i = 0; i < count; ++i) {
                if (variables[i].type == ZvDbDimVariable::kReal)
                    iso->setReal(variables[i].name, variables[i].metric);
                else if (variables[i].type == ZvDbDimVariable::kInteger)
                    iso->setInteger(variables[i].name, int(variables[i].metric));
            }
            iso->setIdValue("DIMTXSTY", m_textStyle);
            current = addRecord(kDimStyleTable, iso, L"ISO-25")->objectId();
        }
        setIdVariable(zvdbVariableNumbers().dimstyle, current);
        setIdVariable(zvdbVariableNumber(L"DIMTXSTY"), m_textStyle);
    }

    void makeLayers()
    {
        ZvDbLayerTableRecord *zero = new ZvDbLayerTableRecord;
        zero->setLinetypeObjectId(m_continuous);
        zero->setPlotStyleNameId(m_normalPlotStyle);
        zero->setMaterialId(m_globalMaterial);
        addRecord(kLayerTable, zero, L"0");
    }

    void makeViewport()
    {
        ZvDbViewportTableRecord *active = new ZvDbViewportTableRecord;
        const double width = m_metric ? 420.0 : 12.0;
        const double height = m_metric ? 297.0 : 9.0;
        active->setCenterPoint(ZvGePoint2d(width / 2.0, height / 2.0));
        active->setWidth(width);
        active->setHeight(height);
        addRecord(kViewportTable, active, L"*Active");
    }

    void makeLayouts()
    {
        ZvDbBlockTableRecord *model = addRecord(kBlockTable, new ZvDbBlockTableRecord, L"*Model_Space");
        ZvDbBlockTableRecord *paper = addRecord(kBlockTable, new ZvDbBlockTableRecord, L"*Paper_Space");
        addLayout(*model, L"Model", 0);
        addLayout(*paper, L"Layout1", 1);

        ZvDbViewport *sheet = new ZvDbViewport;
        ZvDbObjectAccess::setSheet(*sheet, 420.0, 297.0);
        ZvDbEntityProperties properties;
        properties.layer = d.recordId("LAYER", L"0");
        properties.linetype = d.recordId("LTYPE", L"ByLayer");
        const std::uint32_t index = d.adopt(sheet, paper->objectId().index());
        d.setProperties(index, properties);
        ZvDbObjectAccess::entitiesOf(*paper).push_back(index);
    }

    void addLayout(ZvDbBlockTableRecord &block, const wchar_t *name, int tabOrder)
    {
        ZvDbLayout *layout = new ZvDbLayout;
        const ZvDbObjectId id = addEntry(*m_layouts, layout, name);
        ZvDbObjectAccess::setBlock(*layout, block.objectId());
        ZvDbObjectAccess::setPage(*layout, tabOrder);
        ZvDbObjectAccess::setLayout(block, id);
    }

    void makeStyles()
    {
        ZvDbMLeaderStyle *mleader = new ZvDbMLeaderStyle;
        ZvDbObjectAccess::setTextStyle(*mleader, m_textStyle);
        addEntry(*m_mleaderStyles, mleader, L"Standard");
        ZvDbTableStyle *table = new ZvDbTableStyle;
        ZvDbObjectAccess::setTextStyle(*table, m_textStyle);
        addEntry(*m_tableStyles, table, L"Standard");
    }

    void setIdVariable(int number, ZvDbObjectId id)
    {
        ZvDbVariableValue value = d.variable(number);
        value.id = id;
        d.loadVariable(number, value);
    }

    ZvDbDatabasePrivate &d;
    const bool m_metric;
    ZvDbDictionary *m_root = nullptr;
    ZvDbDictionary *m_layouts = nullptr;
    ZvDbDictionary *m_mleaderStyles = nullptr;
    ZvDbDictionary *m_tableStyles = nullptr;
    ZvDbObjectId m_continuous;
    ZvDbObjectId m_textStyle;
    ZvDbObjectId m_globalMaterial;
    ZvDbObjectId m_normalPlotStyle;
};

void ZvDbObjectAccess::makeAnnotative(ZvDbTextStyleTableRecord &style)
{
    // "AnnotativeData" with a version and the switch, in braces.
    ZvResBuf buffers[6];
    const int types[] = {1001, 1000, 1002, 1070, 1070, 1002};
    wchar_t application[] = L"AcadAnnotative";
    wchar_t data[] = L"AnnotativeData";
    wchar_t open[] = L"{";
    wchar_t close[] = L"}";
    for (int i = 0; i < 6; ++i) {
        buffers[i].restype = types[i];
        buffers[i].rbnext = i < 5 ? &buffers[i + 1] : nullptr;
    }
    buffers[0].resval.rstring = application;
    buffers[1].resval.rstring = data;
    buffers[2].resval.rstring = open;
    buffers[3].resval.rint = 1;
    buffers[4].resval.rint = 1;
    buffers[5].resval.rstring = close;
    style.setXData(buffers);
}

void ZvDbObjectAccess::setSheet(ZvDbViewport &viewport, double width, double height)
{
    viewport.m_center = ZvGePoint3d(width / 2.0, height / 2.0);
    viewport.m_width = width;
    viewport.m_height = height;
    viewport.m_viewCenter = ZvGePoint2d(width / 2.0, height / 2.0);
    viewport.m_viewHeight = height;
    viewport.m_number = 1;
    viewport.m_status = 1;
}

void ZvDbObjectAccess::setPage(ZvDbLayout &layout, int tabOrder)
{
    layout.m_tabOrder = tabOrder;
    layout.m_plotType = tabOrder == 0 ? 0 : 5;
    if (tabOrder == 0) { // what is seen of model space fills the paper, whatever its size
        layout.m_scaleType = 0;
        layout.m_plotFlags |= ZvDbPlotSettings::kCentered | ZvDbPlotSettings::kForModel;
    }
    layout.m_paperName = L"ISO_A3_(420.00_x_297.00_MM)";
    layout.m_plotter = L"none_device";
    layout.m_paperSize = ZvGePoint2d(420.0, 297.0);
    layout.m_marginsMin = ZvGePoint2d(7.5, 20.0);
    layout.m_marginsMax = ZvGePoint2d(7.5, 20.0);
}

ZvSmartPtr<ZvDbDatabase> ZvDbDatabase::create(bool metric)
{
    struct Drawing : ZvDbDatabase
    {
        explicit Drawing(bool metric) : ZvDbDatabase(metric) { }
    };
    const ZvDbDatabasePtr database = ZvDbDatabasePtr::adopt(new ZvRxObjectImpl<Drawing>(metric));
    ZvDbDatabasePrivate &d = *database->priv();
    ++d.undo.suspended;
    ZvDbDrawingMaker(d, metric).make();
    --d.undo.suspended;
    d.contentLoaded();
    return database;
}
