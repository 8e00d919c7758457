#include "core/Claves.h"

#include "core/Cipher.h"
#include "core/Session.h"

#include <sodium.h>

#include <QByteArray>
#include <stdexcept>

namespace hipico {

namespace {

const QString kPrefijoArgon2id = QStringLiteral("$argon2id$");

void iniciarSodium() {
    static const bool listo = sodium_init() >= 0;
    if (!listo) throw std::runtime_error("no se pudo iniciar libsodium");
}

}  // namespace

FormaClave formaClaveConfigurada(const Session& s) {
    return s.ajuste(QStringLiteral("clave_segura")) == 1 ? FormaClave::Argon2id : FormaClave::Cifrada;
}

QString guardarClave(const QString& clave, FormaClave forma) {
    if (forma == FormaClave::Cifrada) return Encriptar(clave, kClaveMaestra);
    iniciarSodium();
    const QByteArray texto = clave.toUtf8();
    char hash[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(hash, texto.constData(), static_cast<unsigned long long>(texto.size()),
                          crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::runtime_error("sin memoria para cifrar la clave");
    return QString::fromLatin1(hash);
}

bool esClaveHash(const QString& guardada) { return guardada.startsWith(kPrefijoArgon2id); }

bool claveCorrecta(const QString& guardada, const QString& tecleada) {
    if (tecleada.isEmpty() || guardada.isEmpty()) return false;
    if (esClaveHash(guardada)) {
        iniciarSodium();
        const QByteArray hash = guardada.toLatin1();
        const QByteArray texto = tecleada.toUtf8();
        return crypto_pwhash_str_verify(hash.constData(), texto.constData(),
                                        static_cast<unsigned long long>(texto.size())) == 0;
    }
    try {
        return Desencriptar(guardada, kClaveMaestra) == tecleada;
    } catch (const std::range_error&) {
        // A stored text the cipher cannot read back matches nothing.
        return false;
    }
}

}  // namespace hipico
