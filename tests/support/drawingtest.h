// SPDX-License-Identifier: MIT
#ifndef DRAWINGTEST_H
#define DRAWINGTEST_H

#include "messageboxes.h"
#include "modulesession.h"
#include "zevatest.h"
#include "zvmonitorglobaluisystemvarreactor.h"
#include "zvodasetting.h"
#include "zvqtupdatebusservice.h"

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvedvars.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

#include <functional>
#include <memory>
#include <vector>

/// Offers the update bus to the controls as a host does: the one reactor, and the service with which controls join it.
class BusHost
{
public:
    BusHost();
    ~BusHost();
    BusHost(const BusHost &) = delete;
    BusHost &operator=(const BusHost &) = delete;

    ZvMonitorGlobalUISystemVarReactor reactor;
};

/// A colour of the palette; 0 by block, 256 by layer.
inline ZvCmColor colorOfIndex(int index)
{
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(index));
    return color;
}

/// A command "TESTWORK" for the life of the object. \a body runs inside it, and fails it by an exception.
class WorkCommand
{
public:
    explicit WorkCommand(std::function<void()> body);
    ~WorkCommand();
    WorkCommand(const WorkCommand &) = delete;
    WorkCommand &operator=(const WorkCommand &) = delete;
};

/// Base of the tests on a drawing: each function begins with the core started, the library loaded, the update bus offered
/// and switched on, and one empty drawing open; it ends with all of it taken back and no object open.
class DrawingTest : public ZevaTest
{
    Q_OBJECT
protected:
    /// The current document's drawing.
    static ZvDbDatabase &drawing();
    static ZvApDocument *document();
    static ZvEdSelectionHolder &selection();
    ZvMonitorGlobalUISystemVarReactor &bus() { return m_bus->reactor; }
    /// Another empty drawing, made current, with the bus switched on again.
    ZvApDocument *openAnother();
    /// Reads the bytes of a drawing file, for what programs cannot make. Belongs to no document.
    static ZvDbDatabasePtr readDrawing(const QByteArray &bytes);
    /// The same as a document, made current.
    void openDrawing(const QByteArray &bytes);

    static void select(const std::vector<ZvDbObjectId> &ids) { selection().set(ids); }
    /// Runs what is queued; false when a command failed.
    static bool runCommands() { return zvedRunQueue(); }
    static bool runMacro(const ZvString &macro);

    static ZvDbObjectId addLayer(const ZvString &name);
    static ZvDbObjectId addLineType(const ZvString &name);
    /// With a pattern of dashes, gaps (below 0) and dots (0).
    static ZvDbObjectId addLineType(const ZvString &name, const std::vector<double> &lengths);
    static void setPattern(ZvDbObjectId lineType, const std::vector<double> &lengths);
    static ZvDbObjectId addTextStyle(const ZvString &name);
    static ZvDbObjectId addDimStyle(const ZvString &name);
    static ZvDbObjectId addMaterial(const ZvString &name);
    static ZvDbObjectId addPlotStyle(const ZvString &name);
    static ZvDbObjectId addMLeaderStyle(const ZvString &name);
    static ZvDbObjectId addTableStyle(const ZvString &name);
    /// Adds an entity to model space.
    static ZvDbObjectId add(ZvDbEntity *entity);
    static ZvDbObjectId addLine() { return add(new ZvDbLine({0, 0, 0}, {1, 1, 0})); }
    /// Opens an object for write and hands it to \a act.
    template<class T, class Act>
    static void change(ZvDbObjectId id, Act act)
    {
        const ZvDbObjectPointer<T> object(id, ZvDb::kForWrite);
        QVERIFY(object);
        act(*object);
    }
    template<class T, class Act>
    static auto read(ZvDbObjectId id, Act act)
    {
        const ZvDbObjectPointer<T> object(id, ZvDb::kForRead);
        return act(*object);
    }
    static ZvDbObjectId layerNamed(const ZvString &name);
    /// A system variable as a number; NaN where it cannot be read.
    static double variable(const ZvString &name);
    static void setVariable(const ZvString &name, int value);

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<ModuleSession> m_module;
    std::unique_ptr<BusHost> m_bus;
};

namespace QTest {
template<>
inline char *toString(const ZvString &text)
{
    return qstrdup(text.toUtf8().c_str());
}
template<>
inline char *toString(const ZvDbObjectId &id)
{
    return qstrdup(qPrintable(QStringLiteral("id %1").arg(quint64(id.asInt64()), 0, 16)));
}
template<>
inline char *toString(const ZvCmColor &color)
{
    return qstrdup(qPrintable(QStringLiteral("colour %1").arg(color.color(), 8, 16)));
}
}

#endif
