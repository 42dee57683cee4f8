#pragma once

#include <exception>

/// Writes to the editor's debug log that a call of the editor failed, as far as memory allows. Any thread.
void logFailedEntry(const std::exception& failure) noexcept;

/// Calls `body` and returns its result, or `failure` when it throws: when memory ran out. The editor's frames know nothing of our
/// exceptions, so whatever the editor calls runs in here: registered and exported functions, callbacks, timers.
template <class Result, class Body>
Result guardEntry(Result failure, Body&& body)
try {
    return body();
} catch (const std::exception& exception) {
    logFailedEntry(exception);
    return failure;
}

/// The same for what has no result.
template <class Body>
void guardEntry(Body&& body)
try {
    body();
} catch (const std::exception& exception) {
    logFailedEntry(exception);
}

/// `call` has the parameters of `function` and calls it in the guard: the editor gets it in the function's place. `failure` is
/// the result of a function that has one.
template <auto function, auto... failure>
struct GuardedEntry;

template <class Result, class... Parameters, Result (*function)(Parameters...), auto failure>
struct GuardedEntry<function, failure> {
    static Result call(Parameters... arguments)
    {
        return guardEntry(static_cast<Result>(failure), [&]() -> Result { return function(arguments...); });
    }
};

template <class... Parameters, void (*function)(Parameters...)>
struct GuardedEntry<function> {
    static void call(Parameters... arguments)
    {
        guardEntry([&] { function(arguments...); });
    }
};
