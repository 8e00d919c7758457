#pragma once

#include <QString>

class QTableView;
class QWidget;

namespace hipico {

class RecordsetModel;

// How the columns of a grid share its width.
enum class AnchoColumnas {
    UltimaOcupaElResto,  // each column its own width, the last one up to the edge
    Repartido,           // every column an equal share
};

// The one set-up of the program's grids: whole rows chosen one at a time,
// nothing edited in place, no row numbers, rows 22 pixels high.
void prepararGrilla(QTableView* grilla, const QString& nombre,
                    AnchoColumnas ancho = AnchoColumnas::UltimaOcupaElResto);
// A new grid showing a recordset model, set up as above.
QTableView* grillaDe(RecordsetModel* modelo, const QString& nombre, QWidget* padre = nullptr);

}  // namespace hipico
