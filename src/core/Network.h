#pragma once

#include <QString>

namespace hipico {

class Dialogs;

// Whether this machine has a working network connection (an interface that is
// up, running, not the loopback, with an address).
bool HayInternet();

// The body of the page at url as text; "" when it cannot be fetched. Direct
// (no proxy), not cached, agent "vb wininet".
QString Gurl(const QString& url, int timeoutMs = 5000);

// True for a dotted address of exactly four parts, each a number of at most 255.
bool EsIpValida(const QString& texto);

// The public address as the services answer it: asked in order (one text,
// addresses separated by blanks) until one answers a valid address; the text
// fetched last, "" when none answered. Says nothing to the user.
QString preguntarIpPublica(const QString& servicios, int timeoutMs = 5000);

// This machine's public address, asked of the services in order (one text,
// addresses separated by blanks) until one answers a valid address. The result
// is the text fetched last; when it is empty the user is told to check the
// connection.
QString IpPublica(const QString& servicios, Dialogs& dialogs, int timeoutMs = 5000);
inline const QString kTituloSinInternet = QStringLiteral("Ups!");
inline const QString kSinInternet = QStringLiteral("Checkee su internet por favor, parece que esta fallando.");

// The hardware address of this machine's enabled network interfaces (the
// last one read wins); "" when there is none.
QString DireccionMac();

}  // namespace hipico
