// SPDX-License-Identifier: MIT
#ifndef ZVSYSTEM_H
#define ZVSYSTEM_H

#include "base/zvrxobject.h"
#include "core/zvapdocument.h"
#include "db/zvdbreactor.h"

/// Counted; keeps the layouts' listeners.
class ZV_EXPORT ZvDbLayoutManager : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbLayoutManager)
public:
    ZvDbLayoutManager();
    ~ZvDbLayoutManager() override;
    /// Adding one twice keeps one; removing an absent one is nothing. Not owned.
    void addReactor(ZvDbLayoutManagerReactor *reactor);
    void removeReactor(ZvDbLayoutManagerReactor *reactor);
    /// Told by the core when a layout of the current drawing became current.
    void fireLayoutBecameCurrent(const ZvDbDatabase *database, const ZvString &name);

private:
    struct Private;
    Private *d;
};

/// The drawing view that has the keyboard, as far as this interface sees it.
class ZV_EXPORT ZvApView
{
public:
    virtual ~ZvApView();
    /// A window handle (a QWidget*); may be null.
    virtual void *widget() const = 0;
};

/// The application's main window, as far as this interface sees it.
class ZV_EXPORT ZvApWindow
{
public:
    virtual ~ZvApWindow();
    /// A window handle (a QWidget*); may be null.
    virtual void *handle() const = 0;
    /// May be null.
    virtual ZvApView *mainView() const = 0;
};

/// The running application.
class ZV_EXPORT ZvApApplication : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvApApplication)
public:
    ZvApApplication();
    ~ZvApApplication() override;
    /// May be null.
    ZvDbLayoutManager *layoutManager() const;
    /// Hides the layout manager, or shows it again: a state that callers survive.
    void setLayoutManagerAvailable(bool available);
    /// Hundredths of a millimetre.
    int defaultLineWeight() const;
    void setDefaultLineWeight(int weight);
    /// May be null. Not owned.
    ZvApWindow *window() const;
    void setWindow(ZvApWindow *window);
    /// Handle of the window, null without one.
    void *windowHandle() const;

private:
    struct Private;
    Private *d;
};

/// Root of the running core. start() makes the document manager, the editor ("ZvEditor" in the system registry), the
/// command stack ("ACRX_REGISTERED_COMMANDS") with the built-in commands, and the application object; stop() closes the
/// documents and takes it all back. Each part may be absent: the accessors give null then.
class ZV_EXPORT CHcSystem
{
public:
    /// Once, before anything else of the core.
    static void start();
    /// Once, after the last use.
    static void stop();
    /// Null before start() and after stop(), and while it is hidden.
    static CHcSystem *instance();
    /// Hides the parts one by one: states that callers survive.
    static void setInstanceAvailable(bool available);
    /// As setInstanceAvailable(), of the document manager.
    void setDocManagerAvailable(bool available);
    /// As setInstanceAvailable(), of the application.
    void setApplicationAvailable(bool available);

    /// Null while it is hidden.
    ZvApDocManager *docManager() const;
    /// Null while it is hidden.
    ZvApApplication *application() const;

private:
    friend ZvApDocManager *zvDocManagerPtr();
    static ZvApDocManager *documentsOfRunningSystem();
    CHcSystem();
    ~CHcSystem();
    struct Private;
    Private *d;
};

#endif
