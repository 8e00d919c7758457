#include "core/Context.h"

#include "core/Openers.h"

#include <QSet>
#include <stdexcept>

namespace hipico {

namespace {

Db& require(const std::shared_ptr<Db>& db, const char* name) {
    if (!db) throw DbError(std::string("la conexión ") + name + " no está abierta", "08003");
    return *db;
}

}  // namespace

Db& Context::servidor() const {
    Db& db = require(cnServidor, "con el servidor");
    // The money journal signs each row with the session's user.
    db.firmar(session.usuario);
    return db;
}
Db& Context::local() const { return require(cnLocal, "local"); }
Db& Context::hipicos() const { return require(cnHipicos, "de centros hípicos"); }

void Context::requireKnown(const QString& name) {
    static const QSet<QString> known = [] {
        QSet<QString> out;
        for (const Opener& o : openers()) out.insert(QString::fromLatin1(o.global));
        return out;
    }();
    if (!known.contains(name)) throw std::logic_error("no existe el recordset " + name.toStdString());
}

const Recordset& Context::rs(const QString& name) const {
    static const Recordset empty;
    requireKnown(name);
    auto it = recordsets_.constFind(name);
    return it == recordsets_.constEnd() ? empty : *it;
}

Recordset& Context::rsEdit(const QString& name) {
    requireKnown(name);
    return recordsets_[name];
}

void Context::setRecordset(const QString& name, Recordset rs) {
    requireKnown(name);
    recordsets_.insert(name, std::move(rs));
}

}  // namespace hipico
