#pragma once

namespace quillbrook::lab {

class Arguments;

/// `page --tab Categories`: the sheets in which applications get their categories.
int categoriesPage(const Arguments& arguments);

} // namespace quillbrook::lab
