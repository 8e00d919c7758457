#pragma once

#include "core/Clock.h"
#include "core/Config.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Dialogs.h"

#include <QString>
#include <QStringList>
#include <initializer_list>

class QWidget;
#include <memory>

namespace hipico::test {

// Where the private test server is: scripts/dbserver's port and password.
Config serverConfig();

// Each test program gets its own throwaway schemas on the private server:
// a central schema "t_<name>" built from central.sql, a local report schema
// "t_<name>_local" and a betting-centre schema "t_<name>_hip". The context
// holds scripted dialogs, a fixed clock and an open central connection.
class TestEnv {
public:
    explicit TestEnv(const QString& name, bool withLocal = false);

    // Rebuilds the central schema empty (every table, no rows).
    void resetCentral();
    // Rebuilds the central schema with the demo day dated at the clock's today.
    void loadDemo();
    // Drops and creates the local report schema and connects to it.
    void resetLocal();
    // Drops and creates the betting-centre schema (with its demo rows).
    void resetHipicos();

    // Fills the session as a sign-in of this user followed by the main menu's
    // load would: identity, group, subgroup, settings and group parameters.
    // The user must exist (loadDemo() has one of every level).
    void signIn(const QString& usuario);

    // The central connection of the context.
    Db& db() { return ctx.servidor(); }
    // The local report connection of the context.
    Db& local() { return ctx.local(); }
    // Another central connection (concurrency: one per thread).
    std::shared_ptr<Db> connect() const;

    QString name;
    Config config;
    ScriptedDialogs dialogs;
    FixedClock clock;
    Context ctx;
};

// Saves a picture of a window (offscreen) as <name>.png in the folder of
// HIPICO_SCREENS, else build/screens; returns the file's path.
QString grab(QWidget* window, const QString& name);

// A scalar of the central schema as text / number (test shorthand).
QString textOf(Db& db, const std::string& sql, const Params& params = {});
double numberOf(Db& db, const std::string& sql, const Params& params = {});
// The rows of a table.
long long contar(Db& db, const char* tabla);

// Every row of the tables, as text, in key order: compare two to see that
// nothing changed.
QStringList foto(Db& db, std::initializer_list<const char*> tablas);

// The cleanup of a test function: a scripted answer left unused fails the
// test (the box it was meant for never came); the boxes are cleared.
void cerrarDialogos(ScriptedDialogs& dialogs);

}  // namespace hipico::test
