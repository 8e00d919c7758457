#pragma once

#include "core/Config.h"
#include "core/Connections.h"
#include "core/Db.h"
#include "schema/SchemaLoader.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
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

// A fresh central schema for a benchmark.
inline void freshCentral(const Config& c) { crearEsquema(c.servidor, scriptCentral(), true); }

using Clock = std::chrono::steady_clock;
inline double microsSince(Clock::time_point t0) {
    return std::chrono::duration<double, std::micro>(Clock::now() - t0).count();
}

inline double percentile(std::vector<double> v, double p) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    const std::size_t i = std::min(v.size() - 1, static_cast<std::size_t>(p / 100.0 * (v.size() - 1) + 0.5));
    return v[i];
}

inline QString flushSetting(Db& db) {
    return Row::toText(db.scalar("SELECT @@innodb_flush_log_at_trx_commit"));
}

}  // namespace hipico::bench
