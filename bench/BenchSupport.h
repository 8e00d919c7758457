#pragma once

#include "core/Config.h"
#include "core/Connections.h"
#include "core/Db.h"
#include "schema/SchemaLoader.h"

#include <QString>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace hipico::bench {

// The private benchmark server (scripts/bench sets the port).
inline Config benchConfig(const QString& schema) {
    Config c;
    const int port = qEnvironmentVariableIntValue("HIPICO_DB_PORT");
    const QString password = qEnvironmentVariable("HIPICO_DB_PASSWORD", QStringLiteral("pqr482"));
    for (ServerConfig* s : {&c.servidor, &c.hipicos}) {
        s->clave = password;
        if (port > 0) s->puerto = port;
    }
    c.localClave = password;
    if (port > 0) c.localPuerto = port;
    c.servidor.base = schema;
    c.localBase = schema + "_local";
    return c;
}

// The group and centre of the row `seq` of a sequence, for INSERT ... SELECT.
inline const char* const kGrupoDeSeq = "CONCAT('G', LPAD(1 + seq % 60, 2, '0'))";
inline const char* const kCentroDeSeq = "IF(seq % 60 < 30, 'CENTRO NORTE', 'CENTRO SUR')";

// A fresh central schema for a benchmark.
inline void freshCentral(const Config& c) { crearEsquema(c.servidor, scriptCentral(), true); }

using Clock = std::chrono::steady_clock;
inline double microsSince(Clock::time_point t0) {
    return std::chrono::duration<double, std::micro>(Clock::now() - t0).count();
}

// How long fn takes, in seconds.
inline double segundos(const std::function<void()>& fn) {
    const auto t0 = Clock::now();
    fn();
    return microsSince(t0) / 1e6;
}

inline double percentile(std::vector<double> v, double p) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    const std::size_t i = std::min(v.size() - 1, static_cast<std::size_t>(p / 100.0 * (v.size() - 1) + 0.5));
    return v[i];
}

// A big day (kDiaGrande): the settings row, one track of eight races with twelve horses
// (the last race still open, every race with its result), 60 groups in two
// centres and two subgroups, and the day's tickets: `ganadores` winner tickets
// and `tablaFija` fixed-table ones over the groups (every tenth a winner due,
// every twentieth paid, every fiftieth a refund due).
inline const QString kDiaGrande = QStringLiteral("2026-11-23");
constexpr int kGruposDiaGrande = 60;
inline void diaGrande(Db& db, int ganadores, int tablaFija) {
    const QString& fecha = kDiaGrande;
    db.exec("INSERT INTO configuracion (id, fecha, carrera, id_hipodromo, valor_ganador, empresa) "
            "VALUES (1, ?, 1, 1, 10, 'RED DE CENTROS HIPICOS')",
            {fecha});
    db.exec("INSERT INTO hipodromos (id_hipodromo, hipodromo) VALUES (1, 'LA RINCONADA')");
    db.exec("INSERT INTO subgrupos (subgrupo, nombre) VALUES ('S1', 'ORIENTE'), ('S2', 'OCCIDENTE')");
    for (int carrera = 1; carrera <= 8; ++carrera)
        for (int n = 1; n <= 12; ++n)
            db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, venta, win_ganadores, "
                    "dividendo) VALUES (?, ?, 1, ?, ?, ?, 3, 4.5)",
                    {fecha, carrera, QString("CABALLO %1").arg(n), n, carrera == 8 ? 1 : 0});
    for (int g = 1; g <= kGruposDiaGrande; ++g)
        db.exec("INSERT INTO grupos (grupo, ch, subgrupo, valor_ganador, por_ch, por_casa, por_admin) "
                "VALUES (?, ?, ?, 10, 40, 40, 20)",
                {QString("G%1").arg(g, 2, 10, QChar('0')), g <= 30 ? "CENTRO NORTE" : "CENTRO SUR", g <= 30 ? "S1" : "S2"});
    const std::string grupo = kGrupoDeSeq, centro = kCentroDeSeq;
    const char* const estatus =
        "CASE WHEN seq % 50 = 7 THEN 4 WHEN seq % 20 = 3 THEN 2 WHEN seq % 10 = 1 THEN 1 ELSE 0 END";
    db.exec("INSERT INTO ma_principal (carrera, caballo, ganadores, ch, grupo, hora, fecha, cobrado, estatus, nu_boleto, "
            "subgrupo) SELECT 1 + seq % 8, 1 + seq % 12, 1 + seq % 5, " + centro + ", " + grupo + ", '10:00:00', ?, IF(" +
                estatus + " = 0, 0, 25), " + estatus + ", CONCAT('1', seq), 'S1' FROM seq_1_to_" + std::to_string(ganadores),
            {fecha});
    db.exec("INSERT INTO tablafija (carrera, caballo, tablas, monto, ch, grupo, hora, fecha, cobrado, estatus, nu_boleto) "
            "SELECT 1 + seq % 8, 1 + seq % 12, 1 + seq % 3, 5 * (1 + seq % 3), " + centro + ", " + grupo +
                ", '10:00:00', ?, IF(" + estatus + " = 0, 0, 40), " + estatus + ", CONCAT('2', seq) FROM seq_1_to_" +
                std::to_string(tablaFija),
            {fecha});
    for (const char* t : {"ma_principal", "tablafija"}) db.exec(std::string("ANALYZE TABLE ") + t);
}

// The floor under every sale: one bound insert of a ticket, its last insert
// id and a one-row update, on one connection.
inline void ticketFloor(Db& db, int k) {
    db.exec("INSERT INTO `ma_principal` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,NULL)",
            {1, 1 + k % 12, 2.0, "LOS PINOS", "07", "10:00:00", "2026-11-23", 0.0, 0, "0", "", "S1", "0", "0", "0",
             "0", "0", "0"});
    const long long numero = db.lastInsertId();
    db.exec("update ma_principal set nu_boleto=? Where numero = ? limit 1", {"11123" + QString::number(numero), numero});
}

// Median and p99 of `n` timed runs of fn(k), after `warm` untimed ones.
struct Figures {
    double median = 0, p99 = 0;
};
inline Figures timed(int warm, int n, const std::function<void(int)>& fn) {
    for (int k = 0; k < warm; ++k) fn(k);
    std::vector<double> t;
    for (int k = 0; k < n; ++k) {
        const auto t0 = Clock::now();
        fn(warm + k);
        t.push_back(microsSince(t0));
    }
    return {percentile(t, 50), percentile(t, 99)};
}

inline QString flushSetting(Db& db) {
    return Row::toText(db.scalar("SELECT @@innodb_flush_log_at_trx_commit"));
}

}  // namespace hipico::bench
