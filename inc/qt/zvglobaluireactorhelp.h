// SPDX-License-Identifier: MIT
#ifndef ZVGLOBALUIREACTORHELP_H
#define ZVGLOBALUIREACTORHELP_H

#include "base/zvcmcolor.h"
#include "base/zvexport.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"

#include <cstdint>
#include <memory>

class ZvDbDatabase;
class ZvDbEntity;
class ZvDbObject;

/// \file
/// What the update bus hands its receivers: the notice, and the summaries of the selection that controls lend it.

/// Kinds of notices. Single bits that are not combined.
enum ZvNoticeKind : std::uint64_t {
    kNoticeDocumentCurrent = 1, ///< Another document became current.
    kNoticeLayoutSwitched = 2, ///< Another layout is shown; the notice does not say which.
    kNoticeSysVar = 4, ///< A system variable was set; \a name is its name.
    kNoticeObject = 16, ///< An object was added, changed, erased or un-erased; \a object and \a database tell which.
    kNoticePickFirst = 64, ///< The pick-first selection changed.
    kNoticeHostFirst = 512, ///< The host's own; the summaries of the selection are left as they are.
    kNoticeHostSecond = 1024, ///< The host's own; the summaries of the selection are left as they are.
    kNoticeCommandEnded = 2048, ///< A command ended; \a name is its name.
};

/// A notice of the update bus: that something changed, not what it changed to. A receiver reads again what it shows.
///
/// It lives on the stack of the delivery: receivers must not keep it, nor the pointers in it.
struct CZvGlobalUIReactorHelp
{
    std::uint64_t kind = 0; ///< A ZvNoticeKind.
    ZvString name; ///< Of the variable or the command; empty for other kinds.
    const ZvDbObject *object = nullptr; ///< Not owned; good during the delivery only.
    const ZvDbDatabase *database = nullptr; ///< Not owned; good during the delivery only.
    bool affectsSelection = false; ///< What the selected entities look like may have changed with the object.
};

namespace ZvGlobalUIReactorHelp {

/// What a summary knows of the pick-first selection.
enum PickFirstStatus : std::int32_t {
    kInfoNoDocument = 0, ///< No current document; also before the first scan.
    kInfoNoSelection = 1, ///< Nothing is selected: the drawing's current value counts.
    kInfoUniform = 2, ///< All selected entities share the value.
    kInfoMixed = 3, ///< They differ, or one of them lacks the property.
};

/// Summary of one property over the pick-first selection. A control owns its summary and lends it to the bus, which
/// brings it up to date before a notice; the selection is scanned once for the summaries of all controls.
///
/// The order of the virtual operations is binding.
class ZV_EXPORT SPickFirstInfo
{
public:
    SPickFirstInfo();
    virtual ~SPickFirstInfo();
    SPickFirstInfo(const SPickFirstInfo &) = delete;
    SPickFirstInfo &operator=(const SPickFirstInfo &) = delete;

    /// Takes in the entities of one pass of the scan, which are open for read. Either may be null: one that could not be
    /// opened, or the missing partner of the middle one. Is called until the status is kInfoMixed.
    virtual void merge(const ZvDbEntity *first, const ZvDbEntity *second) = 0;
    /// Before a scan: the status becomes kInfoUniform, and what was taken in is forgotten.
    virtual void reset() = 0;

    std::int32_t status = kInfoNoDocument; ///< A PickFirstStatus.
};

/// What the ten summaries below have in common. reset() leaves \a value as it is; every merge() ends with setting it.
template<class T>
class ZV_EXPORT SPropertyInfo : public SPickFirstInfo
{
public:
    ~SPropertyInfo() override;
    /// The status becomes kInfoUniform; \a value stays.
    void reset() override;

    /// The common value. With mixed entities: the value of the first pair, empty where these two differ.
    T value;

protected:
    /// \a empty is the value of nothing.
    explicit SPropertyInfo(const T &empty);

private:
    friend struct SPickFirstInfoAccess;
    struct Scratch; // what was taken in since reset()
    std::unique_ptr<Scratch> m_scratch;
    const T m_empty;
};

extern template class SPropertyInfo<ZvCmColor>;
extern template class SPropertyInfo<ZvString>;
extern template class SPropertyInfo<ZvDb::LineWeight>;
extern template class SPropertyInfo<ZvDbObjectId>;

/// Colour of the entities, by layer and by block not resolved.
class ZV_EXPORT SColorInfo : public SPropertyInfo<ZvCmColor>
{
public:
    SColorInfo();
    ~SColorInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Name of the line type. Names that differ in case only are different.
class ZV_EXPORT SLineTypeInfo : public SPropertyInfo<ZvString>
{
public:
    SLineTypeInfo();
    ~SLineTypeInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Line weight in hundredths of a millimetre, or one of the negative values; by layer is not resolved. Empty: -1.
class ZV_EXPORT SLineWeightInfo : public SPropertyInfo<ZvDb::LineWeight>
{
public:
    SLineWeightInfo();
    ~SLineWeightInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Layer of the entities.
class ZV_EXPORT SLayerInfo : public SPropertyInfo<ZvDbObjectId>
{
public:
    SLayerInfo();
    ~SLayerInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Name of the material. Names that differ in case only are different.
class ZV_EXPORT SMaterialInfo : public SPropertyInfo<ZvString>
{
public:
    SMaterialInfo();
    ~SMaterialInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Name of the plot style. Names that differ in case only are different.
class ZV_EXPORT SPlotStyleInfo : public SPropertyInfo<ZvString>
{
public:
    SPlotStyleInfo();
    ~SPlotStyleInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Style of tables. A selected entity of another kind makes it mixed.
class ZV_EXPORT STableStyleInfo : public SPropertyInfo<ZvDbObjectId>
{
public:
    STableStyleInfo();
    ~STableStyleInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Style of dimensions. A selected entity of another kind makes it mixed.
class ZV_EXPORT SDimStyleInfo : public SPropertyInfo<ZvDbObjectId>
{
public:
    SDimStyleInfo();
    ~SDimStyleInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Text style of texts, multiline texts, dimensions and multileaders. A selected entity of another kind makes it mixed.
class ZV_EXPORT STextStyleInfo : public SPropertyInfo<ZvDbObjectId>
{
public:
    STextStyleInfo();
    ~STextStyleInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

/// Style of multileaders. A selected entity of another kind makes it mixed.
class ZV_EXPORT SMleaderStyleInfo : public SPropertyInfo<ZvDbObjectId>
{
public:
    SMleaderStyleInfo();
    ~SMleaderStyleInfo() override;
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override;
};

} // namespace ZvGlobalUIReactorHelp

#endif
