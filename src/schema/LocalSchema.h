#pragma once

#include <QStringList>

namespace hipico {

struct Config;

// The statements that create the local report schema's tables, in their
// order (conf_local's default row comes right after conf_local).
const QStringList& tablasLocales();

// Creates the local report schema: the schema itself, then every report
// table in order and the default local settings row. Fails (and creates
// nothing) when the schema already exists: the caller drops it first.
void CrearBDLocal(const Config& config);

}  // namespace hipico
