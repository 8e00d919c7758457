#pragma once

#include "core/Campo.h"
#include "core/Recordset.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;

// A column of a master-data window's grid.
struct ColumnaMaestro {
    QString titulo;      // " INICIALES "
    QString campo;       // column of the listing
    bool fecha = false;  // stored "YYYY-MM-DD", shown "DD-MM-YYYY"
};

// A refusal: the title and text of its message.
struct Negativa {
    QString titulo;
    QString texto;
};

// What a master-data window is: its table and the key of its updates and
// deletes, its fields, its grid, the filter of its listing and its own texts.
struct DescripcionMaestro {
    QString ventana;                    // the window's name ("Form_Hipicos"), also in the error log
    QString titulo;                     // its caption
    QString tabla;                      // the table it keeps
    QString clave;                      // the key column, never changed by modificar (a field, or
                                        // the table's generated key)
    QVector<Campo> campos;              // in the order of the form
    QVector<ColumnaMaestro> columnas;   // the grid
    QString etiquetaFiltro;             // caption of the listing's filter ("" for none)
    QString pedirBusqueda;              // Buscar's question (title "buscar")
    QString noExiste;                   // Buscar found nothing
};

// Values ready to be written: column -> bound value.
using FilaMaestra = QMap<QString, SqlValue>;

// The master-data pattern, logic side: list, search, read a record, and
// Guardar (a new record), modificar (the record read) and Eliminar, each
// with its checks in one order:
//   1. every required (yellow) field filled (a password may stay empty when
//      modifying: the stored one is kept);
//   2. every field valid (dates, numbers and their bounds, lengths, lists);
//   3. the window's own rules (reglas), read in the same transaction as the
//      write, so two users saving at once cannot both pass them;
// then the write and its message. A refusal changes nothing. A window is a
// description plus the rules and statements of its own.
class Maestro {
public:
    Maestro(Context& ctx, DescripcionMaestro descripcion);
    virtual ~Maestro();
    Maestro(const Maestro&) = delete;
    Maestro& operator=(const Maestro&) = delete;

    const DescripcionMaestro& descripcion() const { return d_; }

    // The choices of a list field for this session (the description's by default).
    virtual QStringList opciones(const QString& columna);
    // The choices of the listing's filter ("" first when it has none).
    virtual QStringList filtros() { return {}; }

    // The grid's rows for a filter choice; nullopt after a failure (told).
    std::optional<Recordset> listar(const QString& filtro);
    // Buscar: asks for the text; nullopt when cancelled, failed or nothing
    // was found (told).
    std::optional<Recordset> buscar();
    // Reads the record with that key and remembers it as the one modificar
    // and Eliminar act on; its values as the fields show them.
    std::optional<ValoresCampos> leer(const QString& clave);
    // Nuevo: forgets the record read; the values a new record starts with.
    ValoresCampos nuevo();
    bool hayRegistro() const { return registro_.has_value(); }
    // The key of the record read ("" when none).
    QString claveActual() const;

    bool guardar(const ValoresCampos& valores);
    bool modificar(const ValoresCampos& valores);
    // Asks for confirmation, then deletes the record read.
    bool eliminar();

protected:
    virtual Recordset consultaListado(Db& db, const QString& filtro) = 0;
    virtual Recordset consultaBusqueda(Db& db, const QString& texto) = 0;
    // The values of a new record (empty fields by default).
    virtual ValoresCampos valoresNuevos() { return {}; }
    // Adjusts the typed values before any check.
    virtual void completar(ValoresCampos&) {}
    // The window's own checks, in order, inside the write's transaction.
    virtual std::optional<Negativa> reglas(Db&, const ValoresCampos&, bool /*nuevo*/) { return std::nullopt; }
    // The checks of Eliminar, before its question.
    virtual std::optional<Negativa> reglasEliminar(Db&) { return std::nullopt; }
    // The writes: by default an insert naming the fields' columns, an update
    // of them by the key ("limit 1") and a delete by the key ("limit 1").
    // An insert gives the new record's key.
    virtual QString insertar(Db& db, const FilaMaestra& fila);
    virtual void actualizar(Db& db, const FilaMaestra& fila);
    virtual void borrar(Db& db, const QString& clave);

    // The record read last (an empty row when none).
    const Row& registro() const;
    Context& ctx_;

private:
    bool escribir(ValoresCampos valores, bool nuevo);
    // Step 2: the fields as values to write; a refusal when one is not valid.
    std::optional<Negativa> validar(const ValoresCampos& valores, bool nuevo, FilaMaestra& fila);

    DescripcionMaestro d_;
    std::optional<Row> registro_;
};

inline const QString kTituloRegistros = QStringLiteral("Información del Sistema");
inline const QString kTituloInformacion = QStringLiteral("Información");
inline const QString kLlenarAmarillos = QStringLiteral(" Debe llenar los registros en Amarillo necesariamennte");
inline const QString kDatosModificados = QStringLiteral("Los datos fueron Modificados satisfactoriamente");
inline const QString kRegistroEliminado = QStringLiteral("El Registro fue Eliminado Satisfactoriamente");
inline const QString kConfirmarEliminar = QStringLiteral(" ¿Esta seguro de querer eliminar el registro?");
inline const QString kTituloBuscar = QStringLiteral("buscar");
inline const QString kSeleccioneRegistro = QStringLiteral("DEBE SELECCIONAR UN REGISTRO DE LA LISTA");

}  // namespace hipico
