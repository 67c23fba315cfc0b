#include "pages/views/BellSound.h"

#include "platform/SystemSound.h"

namespace quillbrook {

void ringBell(SystemSound& sound)
{
    sound.play("Glass", [&sound](bool isThere) {
        if (isThere) {
            return;
        }
        sound.play("Ping", [&sound](bool isOtherThere) {
            if (!isOtherThere) {
                sound.beep();
            }
        });
    });
}

} // namespace quillbrook
