#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <functional>

namespace hipico {

class Context;
class WindowRegistry;
struct Session;

// The main menu's logic: its load (settings, group parameters, notice,
// newer version), which entries each level sees, the entries' allow-lists,
// and the menu's own functions (void by code, rebuild of the local report
// schema, the auction board choice, the fixed-table information of the
// current race, exit).
class MenuPrincipal {
public:
    MenuPrincipal(Context& ctx, const WindowRegistry& ventanas);

    enum class Carga { Lista, Terminar };
    // The load, in order: the settings (permitir_tf / permitir_mc first) and
    // the group parameters; then, once the menu shows the user's entries,
    // the administrator notice and the newer-version question.
    // Terminar: the user chose to download the newer version.
    Carga Form_Load() {
        cargarAjustes();
        return avisos();
    }
    void cargarAjustes();
    Carga avisos();

    // "MENU PRINCIPAL -  " and the session's centre and user.
    static QString titulo(const Session& s);
    // The status bar's panels.
    QStringList panelesEstado() const;
    // The two lines behind the windows: the company, and who is signed in where.
    QStringList lineasFondo() const;

    // Whether the entry is shown to the session's level: its level allows it
    // and there is something to open (a registered window or a function of
    // the menu itself).
    bool visible(const QString& entrada) const;
    // Whether a shown entry can be used now (the fixed-table and Macuare
    // sales follow permitir_tf / permitir_mc).
    bool habilitada(const QString& entrada) const;
    // The allow-list re-check of a clicked entry: other levels are told they
    // have no access. Entries without an allow-list always pass.
    bool permitido(const QString& entrada) const;

    enum class Anulacion { Cancelada, SinAcceso, NoEncontrado, CarreraProcesada, Anulado, Error };
    // anular_menu: void a winner ticket of the session's group by its code.
    Anulacion AnularBoleto();

    // bdlocalmenu: drop and create the local report schema, then reconnect.
    // Returns whether it was rebuilt.
    bool BorrarBDLocal();

    // subasta_menu: the auction board of the session's group ("" when the
    // group has none). Reloads the group's auction parameters first.
    QString ElegirSubasta();
    // The board for a number of auction tables and board size ("" for none).
    static QString tableroPara(int subastas, int rematetam);

    // imp_tfactual: refills the local table of the current race's horses.
    bool LlenarTFActual();

    // Exit: true when the user confirmed (the machine binding is cleared).
    bool Salir();

    // Opens an address with the desktop's "open" action.
    std::function<bool(const QUrl&)> abrirDireccion;

private:
    Context& ctx_;
    const WindowRegistry& ventanas_;
};

inline const QString kTituloSinAcceso = QStringLiteral("ACCESO");
inline const QString kTituloMensajeAdmin = QStringLiteral("ATENCION MENSAJE DEL ADMINISTRADOR");
inline const QString kTituloActualizacion = QStringLiteral("Actualización de Sistema");
inline const QString kNuevaVersion =
    QStringLiteral("Ya existe una nueva versión del sistema, ¿desea descargarla ahora?");
inline const QString kBorrarBDLocal = QStringLiteral(" ¿Esta usted seguro de querer borrar la bd local?");
inline const QString kBDLocalBorrada = QStringLiteral("Se ha borrado con exito la bd local");
inline const QString kTituloSalir = QStringLiteral("SALIR DEL SISTEMA");
inline const QString kSalir = QStringLiteral("Esta seguro de salir del sistema");

}  // namespace hipico
