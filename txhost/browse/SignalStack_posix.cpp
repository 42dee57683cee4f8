#include "txhost/browse/SignalStack.h"

#include <csignal>
#include <cstddef>

SignalStack::SignalStack()
{
    constexpr std::size_t size = 65536;
    stack_t stack{};
    if (sigaltstack(nullptr, &stack) != 0 || (stack.ss_flags & SS_DISABLE) == 0)
        return;
    m_bytes = std::make_unique<char[]>(size);
    stack.ss_sp = m_bytes.get();
    stack.ss_size = size;
    stack.ss_flags = 0;
    sigaltstack(&stack, nullptr);
}

SignalStack::~SignalStack()
{
    stack_t none{};
    none.ss_flags = SS_DISABLE;
    if (m_bytes)
        sigaltstack(&none, nullptr);
}
