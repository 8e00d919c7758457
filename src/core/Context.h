#pragma once

#include "core/Clock.h"
#include "core/Config.h"
#include "core/Db.h"
#include "core/Dialogs.h"
#include "core/Session.h"

#include <QHash>
#include <functional>
#include <memory>

namespace hipico {

// What the program keeps program-wide: the three connections, the named
// recordsets the openers fill, the session, and the ways to reach the user
// and the time. One per running program (and one per test).
class Context {
public:
    Context(Config config, Dialogs& dialogs, Clock& clock)
        : config(std::move(config)), dialogs(dialogs), clock(clock) {}

    Config config;
    Dialogs& dialogs;
    Clock& clock;

    std::shared_ptr<Db> cnServidor;  // central server
    std::shared_ptr<Db> cnLocal;     // local report schema
    std::shared_ptr<Db> cnHipicos;   // betting-centre server

    Session session;

    // Set by the main menu: windows that change the current race put the new
    // state into the menu's caption through it (unset: nothing to update).
    std::function<void(const QString&)> tituloMenu;
    void ponerTituloMenu(const QString& titulo) const {
        if (tituloMenu) tituloMenu(titulo);
    }

    // The connection, or a DbError saying it is not open.
    Db& servidor() const;
    Db& local() const;
    Db& hipicos() const;

    // Named recordsets (rsGrupos, rsConfiguracion...). An opener replaces the
    // one held under its name; reading one never opened gives an empty one.
    // A name no opener fills is a mistake of the program: std::logic_error.
    const Recordset& rs(const QString& name) const;
    Recordset& rsEdit(const QString& name);
    void setRecordset(const QString& name, Recordset rs);
    bool hasRecordset(const QString& name) const { return recordsets_.contains(name); }

private:
    static void requireKnown(const QString& name);
    QHash<QString, Recordset> recordsets_;
};

}  // namespace hipico
