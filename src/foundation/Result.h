// What an operation that can fail hands back: its value, or an error with a sentence a person can use.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

/// Why something failed. The message is a whole sentence in plain words, naming file, line and field where there are such.
struct Error {
    std::string message;
};

template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : m_content(std::in_place_index<0>, std::move(value)) { }
    Result(Error error) : m_content(std::in_place_index<1>, std::move(error)) { }

    bool ok() const { return m_content.index() == 0; }
    explicit operator bool() const { return ok(); }
    /// Only when ok().
    const T& value() const& { return std::get<0>(m_content); }
    T& value() & { return std::get<0>(m_content); }
    T&& value() && { return std::get<0>(std::move(m_content)); }
    /// Only when not ok().
    const Error& error() const { return std::get<1>(m_content); }

private:
    std::variant<T, Error> m_content;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) { }

    bool ok() const { return !m_error; }
    explicit operator bool() const { return ok(); }
    /// Only when not ok().
    const Error& error() const { return *m_error; }

private:
    std::optional<Error> m_error;
};
