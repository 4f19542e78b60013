#pragma once

#include <QtGlobal>
#include <random>

// Uniform numbers in [0, 1), like the platform's Rnd.
class Random
{
public:
    virtual ~Random() = default;
    virtual void seed(quint32 value) = 0;
    virtual double next() = 0;
};

class SystemRandom : public Random
{
public:
    void seed(quint32 value) override { m_engine.seed(value); }
    double next() override { return std::uniform_real_distribution<double>(0.0, 1.0)(m_engine); }

private:
    std::mt19937 m_engine{5489u};
};
