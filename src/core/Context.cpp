#include "core/Context.h"

namespace hipico {

namespace {

Db& require(const std::shared_ptr<Db>& db, const char* name) {
    if (!db) throw DbError(std::string("la conexión ") + name + " no está abierta", "08003");
    return *db;
}

}  // namespace

Db& Context::servidor() const { return require(cnServidor, "con el servidor"); }
Db& Context::local() const { return require(cnLocal, "local"); }
Db& Context::hipicos() const { return require(cnHipicos, "de centros hípicos"); }

const Recordset& Context::rs(const QString& name) const {
    static const Recordset empty;
    auto it = recordsets_.constFind(name);
    return it == recordsets_.constEnd() ? empty : *it;
}

Recordset& Context::rsEdit(const QString& name) { return recordsets_[name]; }

}  // namespace hipico
