#pragma once

#include "pages/figures/DocumentBlocks.h"
#include "pages/kit/Sheet.h"

#include <vector>

namespace quillbrook {

/// A document that the program carries, to be read over the window that it was asked from.
class DocumentSheet final : public Sheet {
    Q_OBJECT

public:
    /// `address` is that of the document among the program's resources. Fatal when there is none.
    DocumentSheet(const QString& address, QWidget* owner);

private:
    DocumentSheet(const std::vector<DocumentBlock>& blocks, QWidget* owner);
};

} // namespace quillbrook
