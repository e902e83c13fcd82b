// Work that may take longer than anybody waits without a word.
#pragma once

#include <QString>

#include <functional>

/// Told again and again what share of the work is done, from 0 to 1. Answers false when the person wants it stopped.
using GoesOn = std::function<bool(double share)>;

class LongWork {
public:
    virtual ~LongWork() = default;
    /// Does the work. Once it takes longer than a moment, the person sees what is done and how far it is, and can stop it.
    virtual void run(const QString& title, const std::function<void(const GoesOn&)>& work) = 0;
};

/// Where nobody looks on, work is never stopped.
class UnseenWork : public LongWork {
public:
    void run(const QString&, const std::function<void(const GoesOn&)>& work) override
    {
        work([](double) { return true; });
    }
};
