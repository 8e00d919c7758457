#pragma once

#include "sales/TicketPrinter.h"


namespace hipico {

class Context;

// The booth's printer as the session's local settings describe it.
class ImpresoraTaquilla {
public:
    explicit ImpresoraTaquilla(Context& ctx) : ctx_(ctx) {}

    // The graphic mode ("WINDOWS2:").
    bool grafico() const;
    // Prints the piece when this machine prints tickets; a failure is told
    // to the user ("IMPRESORA"), with what it means for the piece.
    bool imprimir(const Impreso& impreso);

private:
    Context& ctx_;
};

}  // namespace hipico
