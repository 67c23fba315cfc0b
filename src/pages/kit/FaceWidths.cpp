#include "pages/kit/FaceWidths.h"

#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QFontMetricsF>

#include <map>
#include <memory>
#include <tuple>

namespace quillbrook {

TextWidth faceWidths()
{
    using Key = std::tuple<TextFamily, int, TextWeight>;
    const auto known = std::make_shared<std::map<Key, QFontMetricsF>>();
    return [known](std::string_view text, const TextFace& face) {
        const Key key{face.family, face.pixels, face.weight};
        auto found = known->find(key);
        if (found == known->end()) {
            found = known->emplace(key, QFontMetricsF(Look::font(face))).first;
        }
        return found->second.horizontalAdvance(oneLine(toQString(text)));
    };
}

} // namespace quillbrook
