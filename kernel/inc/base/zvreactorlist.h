// SPDX-License-Identifier: MIT
#ifndef ZVREACTORLIST_H
#define ZVREACTORLIST_H

#include <algorithm>
#include <vector>

/// Listeners, told in the order in which they were added. Adding one twice keeps one, removing an absent one is nothing,
/// and both are safe while a notice is on its way: one removed then is no longer told, one added then not yet.
template<class Reactor>
class ZvReactorList
{
public:
    /// Null is nothing; not owned.
    void add(Reactor *reactor)
    {
        if (reactor && std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
            m_reactors.push_back(reactor);
    }
    void remove(Reactor *reactor)
    {
        const auto it = std::find(m_reactors.begin(), m_reactors.end(), reactor);
        if (it == m_reactors.end())
            return;
        if (m_delivering)
            *it = nullptr; // the places of the others must stay while they are walked
        else
            m_reactors.erase(it);
    }
    /// Whether nobody listens.
    bool isEmpty() const { return m_reactors.empty(); }
    /// Calls \a call with each listener, in order.
    template<class Call>
    void deliver(Call call)
    {
        ++m_delivering;
        for (std::size_t i = 0, n = m_reactors.size(); i < n; ++i) {
            if (Reactor *reactor = m_reactors[i])
                call(*reactor);
        }
        if (--m_delivering == 0)
            m_reactors.erase(std::remove(m_reactors.begin(), m_reactors.end(), nullptr), m_reactors.end());
    }

private:
    std::vector<Reactor *> m_reactors;
    int m_delivering = 0;
};

#endif
