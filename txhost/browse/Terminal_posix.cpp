#include "txhost/browse/Terminal.h"

#include "txhost/Console.h"
#include "txhost/Failure.h"
#include "txhost/browse/CursesKeys.h"
#include "txhost/browse/CursesPicture.h"
#include "txhost/browse/SignalStack.h"
#include "txhost/browse/TerminalGuard.h"

#include <sys/ioctl.h>

#include <curses.h>
#include <glib.h>
#include <langinfo.h>
#include <poll.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstring>
#include <optional>
#include <string>

#include <term.h>  // last, since it makes macros of common words

namespace {

constexpr int escapeDelayMs = 25;
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

    SignalStack m_openersStack;
    std::optional<SignalStack> m_frontsStack;
    TerminalGuard m_guard{STDIN_FILENO};
    std::string m_reset;
    SCREEN* m_screen = nullptr;
    bool m_isClosed = false;
    std::optional<CursesPicture> m_picture;
    Picture m_last;
    CursesKeys m_keys;
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
    if (!m_frontsStack)
        m_frontsStack.emplace();
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
        const std::optional<Key> key = kind == KEY_CODE_YES ? m_keys.functionKey(code) : std::nullopt;
        if (key)
            keys.push_back(*key);
        else if (kind != OK)
            continue;
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
    m_frontsStack.reset();
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
