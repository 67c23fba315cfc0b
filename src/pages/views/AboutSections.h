#pragma once

namespace quillbrook {

class Section;
struct Technology;

/// What the program does.
Section* featureSection();

/// What the program promises, with the way to the whole of it, and what it is made of.
Section* promiseSection(const Technology& technology);

} // namespace quillbrook
