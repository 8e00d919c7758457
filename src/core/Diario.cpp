#include "core/Diario.h"

#include "core/Db.h"

#include <QCryptographicHash>
#include <QHash>
#include <QSet>
#include <QSysInfo>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace hipico {

namespace {

const QString kOrigen = QString(64, QLatin1Char('0'));

QString& maquinaFijada() {
    static QString nombre;
    return nombre;
}

// The local time to the second, "YYYY-MM-DD HH:MM:SS" (written in every
// sale: the C library's conversion, a fraction of the cost of QDateTime's).
QString momentoLocal() {
    const std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    char texto[32];
    const int n = std::snprintf(texto, sizeof texto, "%04d-%02d-%02d %02d:%02d:%02d", tm.tm_year + 1900,
                                tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
    return QString::fromLatin1(texto, n);
}

// Amounts as the journal stores them (DECIMAL with six decimals) and hashes them.
QString cifra(double v) { return QString::number(v, 'f', 6); }

struct Fila {
    QString cadena;
    long long orden = 0;
    QString momento, usuario, maquina;
    AsientoDiario a;
    QString previo;
};

QString huella(const Fila& f) {
    const QStringList partes{f.cadena,       QString::number(f.orden), f.momento,   f.usuario,
                             f.maquina,      f.a.operacion,            f.a.tabla,   f.a.codigo,
                             f.a.grupo,      f.a.fecha,                QString::number(f.a.carrera),
                             cifra(f.a.unidades), cifra(f.a.monto),    f.previo};
    return QString::fromLatin1(
        QCryptographicHash::hash(partes.join(QChar(0x1f)).toUtf8(), QCryptographicHash::Sha256).toHex());
}

// The chain's last row, locked by key (the insert's trigger moves it on,
// and refuses a row that does not follow it).
const char* const kCola = "SELECT orden, huella FROM diario_cola WHERE cadena = ? FOR UPDATE";
const char* const kNuevaCadena = "INSERT IGNORE INTO diario_cola (cadena, orden, huella) VALUES (?, 0, ?)";

// Whether this program already made sure the chain's row exists (per
// connection string: one per database).
bool cadenaConocida(const QString& cadena) {
    static std::mutex cerrojo;
    static QSet<QString> conocidas;
    const std::lock_guard<std::mutex> guardia(cerrojo);
    if (conocidas.contains(cadena)) return true;
    conocidas.insert(cadena);
    return false;
}

// The server's refusals of a row that does not follow its chain's end: the
// trigger's, and the order already taken.
constexpr long kNoSigue = 1644;
constexpr long kRepetida = 1062;

// The server's trigger refuses a row written outside an open transaction
// as a deadlock (a cluster node that undid the transaction without telling
// the statement it was running): the operation runs again whole.
const char* const kAnotar =
    "INSERT INTO diario (cadena, orden, momento, usuario, maquina, operacion, tabla, codigo, grupo, fecha, carrera, "
    "unidades, monto, previo, huella) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

}  // namespace

QString maquinaLocal() {
    return maquinaFijada().isEmpty() ? QSysInfo::machineHostName() : maquinaFijada();
}

void fijarMaquinaLocal(const QString& nombre) { maquinaFijada() = nombre; }

namespace {

// Writes the row after the chain's end it names (order and previous hash);
// false when the server refused it as not following its chain's end (the
// trigger's refusal, or another row of that order already written).
bool escribir(Db& db, Fila& f, bool rechazable) {
    const QString h = huella(f);
    const AsientoDiario& a = f.a;
    try {
        db.exec(kAnotar, {f.cadena, f.orden, f.momento, f.usuario, f.maquina, a.operacion, a.tabla, a.codigo, a.grupo,
                          a.fecha, a.carrera, cifra(a.unidades), cifra(a.monto), f.previo, h});
    } catch (const DbError& e) {
        if (!rechazable || (e.nativeCode() != kNoSigue && e.nativeCode() != kRepetida)) throw;
        return false;
    }
    db.finCadena() = Db::FinCadena{f.cadena, f.orden, h};
    return true;
}

}  // namespace

void anotar(Db& db, const AsientoDiario& a) {
    if (!db.inTransactionNow()) throw DbError("el diario se escribe dentro de una transacción");
    Fila f;
    f.maquina = db.maquina().isEmpty() ? maquinaLocal() : db.maquina();
    f.cadena = f.maquina;
    f.usuario = db.usuario();
    f.momento = momentoLocal();
    f.a = a;
    // A chain's row exists before it is locked: a locking read of a missing
    // key would lock the gap around it, and two new chains in one gap deadlock.
    if (!cadenaConocida(db.connectionString() + QChar(0x1f) + f.cadena)) db.exec(kNuevaCadena, {f.cadena, kOrigen});
    // The end this connection left is followed without reading it; the
    // server refuses the row when the chain moved on since (another program
    // under this machine's name), and then the end is read under its lock.
    const std::optional<Db::FinCadena> fin = db.finCadena();
    db.finCadena().reset();
    if (fin && fin->cadena == f.cadena) {
        f.orden = fin->orden + 1;
        f.previo = fin->huella;
        if (escribir(db, f, true)) return;
    }
    Recordset cola = db.query(kCola, {f.cadena});
    if (cola.empty()) {
        // The chain's row went away (a database set up again meanwhile).
        db.exec(kNuevaCadena, {f.cadena, kOrigen});
        cola = db.query(kCola, {f.cadena});
    }
    f.orden = cola.empty() ? 1 : cola.first().integer("orden") + 1;
    f.previo = cola.empty() ? kOrigen : cola.first().text("huella");
    escribir(db, f, false);
}

void anotarPremios(Db& db, const QString& fecha, long long carrera, const QString& grupo) {
    // What is due, from the race's due tickets alone (by the index on
    // date, race and status); a group whose earlier row said something was
    // due and now has nothing due gets a row of 0.
    std::string due =
        "SELECT grupo, SUM(cobrado) AS porpagar FROM ma_principal WHERE fecha = ? AND carrera = ? AND estatus IN (1, 4)";
    std::string antes =
        "SELECT DISTINCT grupo, 0 AS porpagar FROM diario WHERE fecha = ? AND tabla = 'ma_principal' AND carrera = ? "
        "AND operacion = 'PREMIOS'";
    Params params{fecha, carrera};
    if (!grupo.isEmpty()) {
        due += " AND grupo = ?";
        antes += " AND grupo = ?";
        params.push_back(grupo);
    }
    Params todos = params;
    todos.insert(todos.end(), params.begin(), params.end());
    QMap<QString, double> porGrupo;
    for (const Row& r : db.query(due + " GROUP BY grupo UNION ALL " + antes, todos))
        porGrupo[r.text("grupo")] += r.number("porpagar");
    for (auto g = porGrupo.cbegin(); g != porGrupo.cend(); ++g)
        anotar(db, {operacion::Premios, QStringLiteral("ma_principal"), {}, g.key(), fecha, carrera, 0, g.value()});
}

// ---------------------------------------------------------------- verification

namespace {

constexpr double kTolerancia = 0.005;

void comparar(InformeDiario& informe, const QString& grupo, const QString& que, double diario, double otro,
              const QString& fuente) {
    if (std::abs(diario - otro) <= kTolerancia) return;
    informe.diferencias << QStringLiteral("GRUPO %1: %2 SEGUN EL DIARIO %3, SEGUN %4 %5")
                               .arg(grupo, que, cifra(diario), fuente, cifra(otro));
}

}  // namespace

InformeDiario verificarDiario(Db& db, const QString& fecha) {
    InformeDiario informe;
    // 1. Every chain, row by row in its order.
    QHash<QString, std::pair<long long, QString>> colas;  // chain -> last order and hash
    const Recordset filas = db.query(
        "SELECT id, cadena, orden, momento, usuario, maquina, operacion, tabla, codigo, grupo, fecha, carrera, "
        "unidades, monto, previo, huella FROM diario ORDER BY cadena, orden");
    for (const Row& r : filas) {
        ++informe.filas;
        Fila f;
        f.cadena = r.text("cadena");
        f.orden = r.integer("orden");
        f.momento = r.text("momento");
        f.usuario = r.text("usuario");
        f.maquina = r.text("maquina");
        f.a = {r.text("operacion"), r.text("tabla"),           r.text("codigo"),        r.text("grupo"),
               r.text("fecha"),     r.integer("carrera"),      r.number("unidades"),    r.number("monto")};
        f.previo = r.text("previo");
        const auto anterior = colas.value(f.cadena, {0, kOrigen});
        const bool enCadena = f.orden == anterior.first + 1 && f.previo == anterior.second;
        if ((!enCadena || huella(f) != r.text("huella")) &&
            (!informe.primeraMala || r.integer("id") < *informe.primeraMala))
            informe.primeraMala = r.integer("id");
        colas.insert(f.cadena, {f.orden, r.text("huella")});
    }
    // A chain whose last rows are gone ends before its recorded end.
    for (const Row& r : db.query("SELECT cadena, orden, huella FROM diario_cola")) {
        const auto fin = colas.value(r.text("cadena"), {0, kOrigen});
        if (fin.first != r.integer("orden") || fin.second != r.text("huella"))
            informe.diferencias << QStringLiteral("LA CADENA %1 TERMINA EN LA FILA %2, DEBE TERMINAR EN LA FILA %3")
                                       .arg(r.text("cadena"))
                                       .arg(fin.first)
                                       .arg(r.integer("orden"));
    }
    if (informe.primeraMala)
        informe.diferencias << QStringLiteral("EL DIARIO FUE ALTERADO: PRIMERA FILA QUE NO ENCADENA: %1")
                                   .arg(*informe.primeraMala);

    // 2. The day rebuilt from the journal alone (winner bets).
    struct Carrera {
        long long desde = 0;  // id of the latest payout row
        double premios = 0;
        double pagadoDespues = 0;
    };
    QMap<QString, QMap<long long, Carrera>> carreras;
    const Recordset dia = db.query(
        "SELECT id, operacion, grupo, carrera, unidades, monto FROM diario WHERE fecha = ? AND tabla = 'ma_principal' "
        "ORDER BY id",
        {fecha});
    for (const Row& r : dia) {
        const QString op = r.text("operacion");
        const QString grupo = r.text("grupo");
        InformeDiario::Totales& t = informe.grupos[grupo];
        Carrera& c = carreras[grupo][r.integer("carrera")];
        if (op == operacion::Venta) {
            t.vendido += r.number("unidades");
        } else if (op == operacion::Anulacion) {
            t.vendido -= r.number("unidades");
            ++t.anulados;
        } else if (op == operacion::Pago) {
            t.pagado += r.number("monto");
            c.pagadoDespues += r.number("monto");
        } else if (op == operacion::Premios) {
            c = {r.integer("id"), r.number("monto"), 0};
        }
    }
    for (auto g = carreras.cbegin(); g != carreras.cend(); ++g)
        for (const Carrera& c : g.value()) informe.grupos[g.key()].porPagar += c.premios - c.pagadoDespues;

    // 3. The same totals from the tickets and the audit log.
    QMap<QString, InformeDiario::Totales> boletos;
    for (const Row& r : db.query(
             "SELECT grupo, SUM(ganadores) AS vendido, "
             "COALESCE(SUM(CASE WHEN estatus IN (2, 3) THEN cobrado END), 0) AS pagado, "
             "COALESCE(SUM(CASE WHEN estatus IN (1, 4) THEN cobrado END), 0) AS porpagar "
             "FROM ma_principal WHERE fecha = ? GROUP BY grupo",
             {fecha}))
        boletos[r.text("grupo")] = {r.number("vendido"), r.number("pagado"), r.number("porpagar"), 0};
    for (const Row& r :
         db.query("SELECT grupo, count(*) AS anulados FROM bitacora WHERE fecha = ? AND estatus = 5 GROUP BY grupo",
                  {fecha}))
        boletos[r.text("grupo")].anulados = r.integer("anulados");
    QStringList todos = informe.grupos.keys();
    for (const QString& g : boletos.keys())
        if (!todos.contains(g)) todos << g;
    const QString tickets = QStringLiteral("LOS BOLETOS");
    for (const QString& g : todos) {
        const InformeDiario::Totales d = informe.grupos.value(g);
        const InformeDiario::Totales b = boletos.value(g);
        comparar(informe, g, QStringLiteral("VENDIDO"), d.vendido, b.vendido, tickets);
        comparar(informe, g, QStringLiteral("PAGADO"), d.pagado, b.pagado, tickets);
        comparar(informe, g, QStringLiteral("POR PAGAR"), d.porPagar, b.porPagar, tickets);
        comparar(informe, g, QStringLiteral("ANULADOS"), d.anulados, b.anulados, QStringLiteral("LA BITACORA"));
    }
    // 4. A closed day's totals per group.
    const bool cerrado = !db.query("SELECT fecha FROM cierres_dia WHERE fecha = ?", {fecha}).empty();
    if (cerrado)
        for (const Row& r : db.query(
                 "SELECT grupo, premios, monto_porpagar FROM ventas_ganadores_general WHERE fecha = ?", {fecha})) {
            const InformeDiario::Totales d = informe.grupos.value(r.text("grupo"));
            const QString totales = QStringLiteral("LOS TOTALES DEL DIA");
            comparar(informe, r.text("grupo"), QStringLiteral("PAGADO"), d.pagado, r.number("premios"), totales);
            comparar(informe, r.text("grupo"), QStringLiteral("POR PAGAR"), d.porPagar, r.number("monto_porpagar"),
                     totales);
        }
    return informe;
}

}  // namespace hipico
