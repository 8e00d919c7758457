#pragma once

#include <QString>

namespace hipico {

struct Session;

// How a user's password is kept in usuarios.clave. Every stored password of
// either form keeps working: the sign-in and every other reader of `clave`
// check a typed password with claveCorrecta.
enum class FormaClave {
    Cifrada,   // the system's reversible cipher under the master key
    Argon2id,  // a one-way Argon2id hash (libsodium), "$argon2id$..."
};

// The form the configuration asks for new and changed passwords
// (configuracion.clave_segura: 1 = Argon2id).
FormaClave formaClaveConfigurada(const Session& s);

// The text to store for a password in that form.
QString guardarClave(const QString& clave, FormaClave forma);

// Whether a stored text is a one-way hash (as opposed to the cipher).
bool esClaveHash(const QString& guardada);

// Whether a typed password matches a stored one, in either form. An empty
// typed password never matches, and the cipher's key is only a key.
bool claveCorrecta(const QString& guardada, const QString& tecleada);

}  // namespace hipico
