#pragma once

#include <QString>

namespace hipico {

class Context;
class Db;

// The sign-in: checks a user name and password against usuarios (the
// password in either stored form, see core/Claves.h), holds an account for
// some minutes after the configured number of failures, applies the
// one-computer rule and the suspended-account rule, fills the session's
// identity, opens the local report connection for the levels that use
// reports and records the login.
class Login {
public:
    enum class Resultado {
        Aceptado,          // the session is filled and the login recorded: open the main menu
        SinConexion,       // the central server did not answer (the connection message was shown)
        UsuarioInvalido,   // no such user: try again
        ClaveInvalida,     // wrong password or user name typed in another case: try again
        SesionEnOtraPc,    // the account is in use on another computer: the program ends
        CuentaSuspendida,  // the account is suspended: the program ends
        CuentaRetenida,    // too many failed sign-ins: the account waits some minutes; try later
        Error,             // a database error, shown to the user: try again
    };

    explicit Login(Context& ctx);

    // The sign-in procedure (the OK button).
    Resultado IniciarSesion(const QString& usuario, const QString& clave);
    // Whether the program ends after that outcome.
    static bool terminaPrograma(Resultado r) {
        return r == Resultado::SesionEnOtraPc || r == Resultado::CuentaSuspendida;
    }
    // Whether the focus goes back to the password box after that outcome.
    static bool vuelveAClave(Resultado r) {
        return r == Resultado::UsuarioInvalido || r == Resultado::ClaveInvalida || r == Resultado::CuentaRetenida;
    }

    // The network label's text.
    static QString textoRed(bool enLinea);
    // The public address found after the sign-in, recorded with the login.
    void registrarIp(const QString& ip);

    // This machine's hardware address (DireccionMac() unless set otherwise).
    QString mac;
    // This machine's public address as the window shows it.
    QString ipPublica;

private:
    Resultado iniciar(const QString& usuario, const QString& clave);
    bool usaReportes() const;
    // Failed sign-ins: the minutes an account is still held (0: not held),
    // one more failure (true when it starts a hold), and a clean slate.
    int minutosRetenida(Db& db, const QString& usuario) const;
    bool contarFallo(Db& db, const QString& usuario) const;

    Context& ctx_;
};

inline const QString kTituloInicioSesion = QStringLiteral("Inicio de sesión");
inline const QString kUsuarioNoValido = QStringLiteral("EL usuario ó la clave no es válida. Vuelva a intentarlo");
inline const QString kClaveNoValida = QStringLiteral("La clave no es válida. Vuelva a intentarlo");
inline const QString kTituloSesionAbierta = QStringLiteral("ADMINISTRACION CENTRAL");
inline const QString kSesionAbierta =
    QStringLiteral("Esta Sesión ya fue abierta en otra pc, Comuniquese con el Administrador");
inline const QString kTituloCobranza = QStringLiteral("DEPARTAMENTO DE COBRANZA");
inline const QString kCuentaSuspendida =
    QStringLiteral("Su cuenta se encuetra suspendida,Comuniquese con el Administrador");
inline const QString kCuentaRetenida =
    QStringLiteral("DEMASIADOS INTENTOS FALLIDOS. LA CUENTA QUEDA RETENIDA POR %1 MINUTOS");
inline const QString kCuentaEnEspera =
    QStringLiteral("LA CUENTA ESTA RETENIDA POR INTENTOS FALLIDOS. INTENTE DE NUEVO EN %1 MINUTOS");
inline const QString kTituloBDLocal = QStringLiteral("BASE DE DATOS LOCAL");
inline const QString kSinBDLocal = QStringLiteral(
    "NO SE PUDO ABRIR LA BASE DE DATOS LOCAL DE REPORTES. PUEDE CREARLA DESDE EL MENU SISTEMA, "
    "BASE DE DATOS LOCAL.");

}  // namespace hipico
