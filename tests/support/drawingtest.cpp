// SPDX-License-Identifier: MIT
#include "drawingtest.h"

#include "addrecord.h"

#include "base/zvregistry.h"
#include "db/zvdbhostservice.h"

#include <cmath>
#include <limits>

namespace {

ZvString busKey()
{
    return ZvString(wchar_t(ZvQtUpdateBusService::kKey));
}

class BusService : public ZvQtUpdateBusService
{
public:
    explicit BusService(ZvMonitorGlobalUISystemVarReactor *reactor) : m_reactor(reactor) { }
    void addReceiver(CZvQtControlHelp *receiver) override { m_reactor->addUpdateUIReceiver(receiver); }
    void removeReceiver(CZvQtControlHelp *receiver) override { m_reactor->removeUpdateUIReceiver(receiver); }

private:
    ZvMonitorGlobalUISystemVarReactor *m_reactor;
};

} // namespace

BusHost::BusHost()
{
    zv_arbitDict_regservice(busKey(), ZvRxObjectPtr::adopt(new ZvRxObjectImpl<BusService>(&reactor)));
}

BusHost::~BusHost()
{
    zv_arbitDict_clearservice(busKey());
}

namespace {
std::function<void()> commandBody; // a command's function takes no arguments
}

WorkCommand::WorkCommand(std::function<void()> body)
{
    commandBody = std::move(body);
    zvedCommandStack()->addCommand(
        L"TEST", L"TESTWORK", L"TESTWORK", 0, [] { commandBody(); }, nullptr, -1, ZvRxResourceInstance(nullptr), 0);
}

WorkCommand::~WorkCommand()
{
    zvedCommandStack()->removeCmd(L"TEST", L"TESTWORK");
    commandBody = nullptr;
}

void DrawingTest::init()
{
    ZevaTest::init();
    m_module = std::make_unique<ModuleSession>();
    m_bus = std::make_unique<BusHost>();
    openAnother();
}

void DrawingTest::cleanup()
{
    CHcSystem::setInstanceAvailable(true); // for tests that hide it to their end
    m_bus.reset();
    m_module.reset();
    ZevaTest::cleanup();
}

ZvDbDatabase &DrawingTest::drawing()
{
    return *document()->database();
}

ZvApDocument *DrawingTest::document()
{
    return zvDocManagerPtr()->currentDocument();
}

ZvEdSelectionHolder &DrawingTest::selection()
{
    return *document()->editingContext()->selectionHolder();
}

ZvApDocument *DrawingTest::openAnother()
{
    ZvApDocument *document = zvDocManagerPtr()->newDocument();
    bus().enableUpdateUI(true);
    return document;
}

ZvDbDatabasePtr DrawingTest::readDrawing(const QByteArray &bytes)
{
    ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    if (database->readStream(bytes.constData(), std::size_t(bytes.size()), report) != Zv::eOk)
        QTest::qFail(report.message.toUtf8().c_str(), __FILE__, __LINE__);
    return database;
}

void DrawingTest::openDrawing(const QByteArray &bytes)
{
    zvDocManagerPtr()->addDocument(readDrawing(bytes), L"");
    bus().enableUpdateUI(true);
}

bool DrawingTest::runMacro(const ZvString &macro)
{
    zvedMenuMacro(macro, false);
    return zvedRunQueue();
}

ZvDbObjectId DrawingTest::addLayer(const ZvString &name)
{
    return addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(drawing(), name);
}

ZvDbObjectId DrawingTest::addLineType(const ZvString &name)
{
    return addRecord<ZvDbLinetypeTable, ZvDbLinetypeTableRecord>(drawing(), name);
}

ZvDbObjectId DrawingTest::addLineType(const ZvString &name, const std::vector<double> &lengths)
{
    const ZvDbObjectId id = addLineType(name);
    setPattern(id, lengths);
    return id;
}

void DrawingTest::setPattern(ZvDbObjectId lineType, const std::vector<double> &lengths)
{
    change<ZvDbLinetypeTableRecord>(lineType, [&lengths](ZvDbLinetypeTableRecord &record) {
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(lengths.size());
        for (std::size_t i = 0; i < lengths.size(); ++i)
            dashes[i].length = lengths[i];
        record.setDashes(dashes);
    });
}

ZvDbObjectId DrawingTest::addTextStyle(const ZvString &name)
{
    return addRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(drawing(), name);
}

ZvDbObjectId DrawingTest::addDimStyle(const ZvString &name)
{
    return addRecord<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>(drawing(), name);
}

ZvDbObjectId DrawingTest::addMaterial(const ZvString &name)
{
    return addEntry(drawing().materialDictionaryId(true), new ZvDbMaterial, name);
}

ZvDbObjectId DrawingTest::addPlotStyle(const ZvString &name)
{
    return addEntry(drawing().plotStyleDictionaryId(true), new ZvDbPlaceHolder, name);
}

ZvDbObjectId DrawingTest::addMLeaderStyle(const ZvString &name)
{
    return addEntry(drawing().mleaderStyleDictionaryId(true), new ZvDbMLeaderStyle, name);
}

ZvDbObjectId DrawingTest::addTableStyle(const ZvString &name)
{
    return addEntry(drawing().tableStyleDictionaryId(true), new ZvDbTableStyle, name);
}

ZvDbObjectId DrawingTest::add(ZvDbEntity *entity)
{
    ZvDbObjectId id;
    drawing().appendEntity(entity, drawing().modelSpaceId(), id);
    return id;
}

ZvDbObjectId DrawingTest::layerNamed(const ZvString &name)
{
    return ZevaUISetting::findLayerTableRecordByName(name, nullptr);
}

double DrawingTest::variable(const ZvString &name)
{
    ZvResBuf value;
    return zvedGetVar(name, &value) == ZvRes::kNormal ? value.number() : std::numeric_limits<double>::quiet_NaN();
}

void DrawingTest::setVariable(const ZvString &name, int value)
{
    ZvResBuf buffer;
    buffer.restype = ZvRes::kShort;
    buffer.resval.rint = short(value);
    QCOMPARE(zvedSetVar(name, &buffer), int(ZvRes::kNormal));
}
