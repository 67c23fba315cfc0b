#pragma once

#include <functional>

namespace quillbrook {

class MainLoop;
class WorkQueues;

/// Keeps from the toolkit what would let it wait without end or for half a minute, and the recorder
/// with it: a session bus, a bus for screen readers, an IBus, directly or behind its portal, and a
/// session manager that give no sign of life. The toolkit does without them until the program's
/// end. Takes a second or two where one is silent. To be called before the application object is
/// made and before other threads run.
void hideSilentServices();

/// Runs `body` on the main thread as soon as the toolkit may ask for a tray, which looks for one
/// only once: at once, unless the tray was found silent; then when it answers.
void whenTrayAnswers(MainLoop& mainLoop, WorkQueues& workQueues, std::function<void()> body);

} // namespace quillbrook
