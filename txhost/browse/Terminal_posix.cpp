#include "txhost/browse/Terminal.h"

#include "txhost/Console.h"
#include "txhost/Failure.h"
#include "txhost/browse/CursesPicture.h"
#include "txhost/browse/TerminalGuard.h"

#include <sys/ioctl.h>

#include <curses.h>
#include <glib.h>
#include <langinfo.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <clocale>
#include <csignal>
#include <cstring>
#include <optional>
#include <string>

#include <term.h>  // last, since it makes macros of common words

namespace {

constexpr int escapeDelayMs = 25;
constexpr auto doubleClickTime = std::chrono::milliseconds(400);
constexpr std::size_t keysAtOnce = 256;

/// The user's locale; where it is not installed, as on another machine, one with the same characters.
void chooseLocale()
{
    std::setlocale(LC_CTYPE, "");
    if (console::showsUTF8() && std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

std::string capability(const char* name)
{
    const char* text = tigetstr(name);
    return text == nullptr || text == reinterpret_cast<const char*>(-1) ? "" : text;
}

/// What brings a terminal back from a full screen. The mouse modes are those that ncurses may have set.
std::string resetText()
{
    std::string text = "\033[?1000l\033[?1006l";
    for (const char* name : {"sgr0", "op", "cnorm", "rmkx", "rmcup"})
        text += capability(name);
    return text;
}

std::optional<KeyKind> kindOf(wint_t code)
{
    switch (code) {
    case KEY_ENTER: return KeyKind::enter;
    case KEY_BTAB: return KeyKind::backTab;
    case KEY_BACKSPACE: return KeyKind::backspace;
    case KEY_UP: return KeyKind::up;
    case KEY_DOWN: return KeyKind::down;
    case KEY_LEFT: return KeyKind::left;
    case KEY_RIGHT: return KeyKind::right;
    case KEY_PPAGE: return KeyKind::pageUp;
    case KEY_NPAGE: return KeyKind::pageDown;
    case KEY_HOME: return KeyKind::home;
    case KEY_END: return KeyKind::end;
    default: return std::nullopt;
    }
}

class CursesTerminal : public Terminal {
public:
    explicit CursesTerminal(bool isColoured);
    ~CursesTerminal() override;

    Picture::Size size() const override;
    void draw(const Picture& picture) override;
    bool wait(cmArray<Key>& keys, int timeoutMs) override;
    void copy(cmROStringT text) override;
    void close() override;
    void finish() override;
    void wake() override { m_guard.wake(); }

private:
    void handleEvents();
    void leaveScreen();
    void drawAnew();
    void returnToScreen();
    void fitSize();
    void suspend();
    bool readKeys(cmArray<Key>& keys);
    void addFunctionKey(cmArray<Key>& keys, wint_t code);
    std::optional<Key> mouseKey();

    TerminalGuard m_guard{STDIN_FILENO};
    std::string m_reset;
    SCREEN* m_screen = nullptr;
    bool m_isClosed = false;
    std::optional<CursesPicture> m_picture;
    Picture m_last;
    Key m_lastClick;
    std::chrono::steady_clock::time_point m_clickTime;
};

CursesTerminal::CursesTerminal(bool isColoured)
{
    chooseLocale();
    m_screen = newterm(nullptr, stdout, stdin);
    if (m_screen == nullptr || capability("cup").empty()) {
        close();
        throw HostError("this terminal (TERM) cannot show a full screen; browse --dump WIDTHxHEIGHT prints one");
    }
    m_reset = resetText();
    m_guard.arm(m_reset);
    raw();
    noecho();
    nonl();
    nodelay(stdscr, TRUE);
    keypad(stdscr, TRUE);
    set_escdelay(escapeDelayMs);
    mouseinterval(0);  // else each click would be held back, as it might become a double one
    mousemask(BUTTON1_PRESSED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
    m_picture.emplace(isColoured);
    fitSize();
}

CursesTerminal::~CursesTerminal()
{
    close();
    if (m_screen != nullptr)
        delscreen(m_screen);
}

Picture::Size CursesTerminal::size() const
{
    return {static_cast<std::size_t>(COLS), static_cast<std::size_t>(LINES)};
}

void CursesTerminal::draw(const Picture& picture)
{
    m_last = picture;
    m_picture->draw(picture);
}

bool CursesTerminal::wait(cmArray<Key>& keys, int timeoutMs)
{
    pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {m_guard.descriptor(), POLLIN, 0}};
    if (poll(sources, 2, timeoutMs) < 0)
        sources[0].revents = 0;
    handleEvents();
    const bool goesOn = m_guard.endingSignal() == 0 && (sources[0].revents == 0 || readKeys(keys));
    return goesOn && m_guard.endingSignal() == 0;  // which may have come during a stop
}

void CursesTerminal::handleEvents()
{
    const TerminalGuard::Events events = m_guard.takeEvents();
    if (events.isSuspended)
        suspend();
    else if (events.isContinued)
        returnToScreen();
    else if (events.isResized)
        fitSize();
}

/// The shell's settings of the terminal, and its screen.
void CursesTerminal::leaveScreen()
{
    if (!isendwin())
        endwin();
    m_guard.disarm();
}

/// Unless the program ends: then the terminal may belong to the shell again.
void CursesTerminal::drawAnew()
{
    if (m_guard.endingSignal() != 0)
        return;
    m_guard.arm(m_reset);
    clearok(curscr, TRUE);
    fitSize();
    m_picture->draw(m_last);
}

/// After a stop that came without a warning: the shell has its own settings now, and may have written over the screen.
void CursesTerminal::returnToScreen()
{
    leaveScreen();
    drawAnew();
}

void CursesTerminal::fitSize()
{
    winsize now{};
    if (ioctl(STDIN_FILENO, TIOCGWINSZ, &now) != 0 || now.ws_row == 0 || now.ws_col == 0)
        return;
    if (now.ws_row == LINES && now.ws_col == COLS)
        return;
    resize_term(now.ws_row, now.ws_col);
    clearok(curscr, TRUE);
}

void CursesTerminal::suspend()
{
    leaveScreen();
    m_guard.suspend();
    def_shell_mode();
    drawAnew();
}

/// Returns false at the end of the input.
bool CursesTerminal::readKeys(cmArray<Key>& keys)
{
    constexpr wint_t controlL = 12;
    constexpr wint_t controlZ = 26;
    wint_t code = 0;
    std::size_t count = 0;
    for (int kind = OK; m_guard.endingSignal() == 0 && count < keysAtOnce && (kind = get_wch(&code)) != ERR; ++count) {
        if (kind == KEY_CODE_YES)
            addFunctionKey(keys, code);
        else if (code == controlL)
            drawAnew();
        else if (code == controlZ)
            suspend();
        else if (code != 0)
            keys.push_back(keyOfCharacter(static_cast<char32_t>(code)));
    }
    if (count > 0)
        return true;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    int waiting = 0;
    return poll(&input, 1, 0) <= 0 || (ioctl(STDIN_FILENO, FIONREAD, &waiting) == 0 && waiting > 0);
}

void CursesTerminal::addFunctionKey(cmArray<Key>& keys, wint_t code)
{
    if (const std::optional<Key> key = code == KEY_MOUSE ? mouseKey() : std::nullopt)
        keys.push_back(*key);
    else if (const std::optional<KeyKind> kind = kindOf(code))
        keys.push_back({*kind});
}

std::optional<Key> CursesTerminal::mouseKey()
{
    MEVENT event;
    if (getmouse(&event) != OK || event.x < 0 || event.y < 0)
        return std::nullopt;
    Key key{KeyKind::click, 0, static_cast<std::size_t>(event.y), static_cast<std::size_t>(event.x)};
    if (event.bstate & BUTTON4_PRESSED)
        key.kind = KeyKind::wheelUp;
    else if (event.bstate & BUTTON5_PRESSED)
        key.kind = KeyKind::wheelDown;
    else if (!(event.bstate & BUTTON1_PRESSED))
        return std::nullopt;
    if (key.kind != KeyKind::click)
        return key;
    const auto now = std::chrono::steady_clock::now();
    const bool isSecond = key == m_lastClick && now - m_clickTime < doubleClickTime;
    m_clickTime = now;
    m_lastClick = isSecond ? Key() : key;
    if (isSecond)
        key.kind = KeyKind::doubleClick;
    return key;
}

void CursesTerminal::copy(cmROStringT text)
{
    char* const encoded = g_base64_encode(reinterpret_cast<const guchar*>(text.data()), text.size());
    const std::string sequence = std::string("\033]52;c;") + encoded + "\a";
    g_free(encoded);
    [[maybe_unused]] const ssize_t written = ::write(STDOUT_FILENO, sequence.data(), sequence.size());
}

void CursesTerminal::close()
{
    if (m_isClosed || m_screen == nullptr)
        return;
    m_isClosed = true;
    leaveScreen();
}

void CursesTerminal::finish()
{
    if (const int signal = m_guard.endingSignal()) {
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
}

}  // namespace

std::unique_ptr<Terminal> Terminal::open(bool isColoured)
{
    if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0)
        throw HostError("browse needs a terminal at standard input and output; --dump WIDTHxHEIGHT prints one screen");
    return std::make_unique<CursesTerminal>(isColoured);
}
