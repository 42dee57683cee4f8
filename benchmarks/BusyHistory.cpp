#include "benchmarks/BusyHistory.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using Marks = std::vector<int>;

/// Chance that is the same on every machine.
class Chance {
public:
    /// A number from 0 to `end` - 1.
    int below(std::size_t end)
    {
        m_state = m_state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<int>((m_state >> 33) % end);
    }
    bool oneIn(std::size_t times) { return below(times) == 0; }
    /// Lengths as branches have them: half of them up to three, one in twenty above fifty, none above four hundred.
    int length()
    {
        const double share = (below(10000) + 1) / 10000.0;
        return std::min(400, static_cast<int>(1.5 * std::pow(share, -1.15)));
    }

private:
    std::uint64_t m_state = 13;
};

class BusyHistory {
public:
    std::string write(int commits)
    {
        m_main = commit({});
        m_releases.push_back(m_main);
        for (int tree = 0; tree < 12; ++tree)
            m_trees.push_back(m_main);
        while (m_last < commits)
            step();
        for (std::size_t i = 0; i < m_open.size(); ++i)
            ref("heads/topic/" + std::to_string(i), m_open[i].tip);
        for (std::size_t i = 0; i < m_done.size(); ++i)
            ref("heads/waiting/" + std::to_string(i), m_done[i]);
        for (std::size_t i = 0; i < m_maintained.size(); ++i)
            ref("heads/maint-" + std::to_string(i), m_maintained[i]);
        for (std::size_t i = 0; i < m_trees.size(); ++i)
            ref("remotes/tree" + std::to_string(i) + "/main", m_trees[i]);
        for (std::size_t i = 0; i < m_forks.size(); ++i)
            ref("remotes/fork" + std::to_string(i) + "/main", m_forks[i]);
        for (std::size_t i = 0; i < m_releases.size(); ++i)
            ref("tags/v" + std::to_string(i), m_releases[i]);
        ref("heads/main", m_main);
        return m_text + "reset refs/heads/work\nfrom 0000000000000000000000000000000000000000\n\n";
    }

private:
    struct Topic {
        int tip;
        int left;  ///< commits until it can be merged
    };

    void step()
    {
        // People work in sessions: who did something goes on, soon and at the same place.
        const bool goesOn = !m_chance.oneIn(4);
        m_time += m_chance.below(goesOn ? 120 : 3600);
        if (!goesOn) {
            m_kind = m_chance.below(1000);
            m_place = static_cast<std::size_t>(m_chance.below(1000));
        }
        if (!goesOn || m_topic >= m_open.size())
            chooseTopic();
        if (m_kind < 650)
            work();
        else if (m_kind < 850)
            merge();
        else if (m_kind < 910)
            m_main = commit({m_main});
        else if (m_kind < 940)
            maintain();
        else if (m_kind < 980)
            integrate();
        else if (!m_forks.empty())
            workOn(placeIn(m_forks), 12);
        if (m_last >= m_nextRelease)
            release();
    }

    void begin()
    {
        const bool rebased = m_chance.oneIn(5);
        const bool fromTree = !rebased && m_chance.oneIn(4);
        const bool fromOld = !rebased && m_chance.oneIn(20);
        Topic topic{fromTree ? m_trees[pick(m_trees)] : fromOld ? m_releases[pick(m_releases)] : m_main, m_chance.length()};
        if (!rebased) {
            m_open.push_back(topic);
            return;
        }
        while (topic.left-- > 0)  // all of them in one second
            topic.tip = commit({topic.tip});
        m_done.push_back(topic.tip);
    }

    /// Most work goes on in the newest topics, so that others stay open for long.
    void chooseTopic()
    {
        while (m_open.size() < openTopics)
            begin();
        m_topic = std::max(pick(m_open), pick(m_open));
    }

    void work()
    {
        Topic& topic = m_open[m_topic];
        workOn(topic.tip, 60);
        if (--topic.left > 0)
            return;
        m_done.push_back(topic.tip);
        m_open.erase(m_open.begin() + static_cast<std::ptrdiff_t>(m_topic));
        m_topic = m_open.size();
    }

    /// Adds a commit, or one time in `mergeEvery` a merge with main.
    void workOn(int& tip, std::size_t mergeEvery) { tip = m_chance.oneIn(mergeEvery) ? commit({tip, m_main}) : commit({tip}); }

    void merge()
    {
        if (m_done.empty())
            return;
        int& target = m_place / 100 % 2 == 0 ? placeIn(m_trees) : m_main;
        Marks parents{target};
        for (std::size_t count = m_chance.oneIn(40) ? static_cast<std::size_t>(2 + m_chance.below(10)) : 1;
             count > 0 && !m_done.empty(); --count) {
            const std::size_t index = pick(m_done);
            parents.push_back(m_done[index]);
            if (m_chance.oneIn(16))
                ref("heads/merged/" + std::to_string(m_last), m_done[index]);
            m_done.erase(m_done.begin() + static_cast<std::ptrdiff_t>(index));
        }
        target = commit(parents);
    }

    void maintain()
    {
        if (m_maintained.empty())
            return;
        const std::size_t living = std::min<std::size_t>(m_maintained.size(), 4);
        int& tip = m_maintained[m_maintained.size() - 1 - m_place % living];
        if (m_chance.oneIn(8))
            m_main = commit({m_main, tip});
        else if (m_chance.oneIn(6) && !m_done.empty())
            tip = commit({tip, m_done[pick(m_done)]});
        else
            tip = commit({tip});
    }

    void integrate()
    {
        int& tree = placeIn(m_trees);
        if (m_chance.oneIn(3))
            tree = commit({tree, m_main});
        else
            m_main = commit({m_main, tree});
    }

    void release()
    {
        m_nextRelease += 1500;
        m_main = commit({m_main});
        m_releases.push_back(m_main);
        m_maintained.push_back(m_main);
        if (m_releases.size() % 3 == 0)
            m_forks.push_back(m_releases[pick(m_releases)]);
        if (m_releases.size() % 5 == 0)  // another project joins
            m_open.push_back({commit({}), 40});
        if (m_releases.size() % 12 == 0) {  // a script, all in one second
            for (int count = 0; count < 300; ++count)
                m_main = commit({m_main});
        }
    }

    int commit(const Marks& parents)
    {
        constexpr long long day = 86400;
        const long long wrong = m_chance.oneIn(5000) ? (m_chance.below(60) - 30) * day : 0;
        const std::string author = "Author " + std::to_string(m_chance.below(700)) + " <a@example.org> ";
        const std::string when = std::to_string(m_time + wrong) + " +0000\n";
        const std::string subject = "change " + std::to_string(++m_last) + " of what was there before";
        m_text += "reset refs/heads/work\n\ncommit refs/heads/work\nmark :" + std::to_string(m_last) + "\nauthor " + author + when
                  + "committer " + author + when + "data " + std::to_string(subject.size()) + "\n" + subject + "\n";
        for (std::size_t i = 0; i < parents.size(); ++i)
            m_text += (i == 0 ? "from :" : "merge :") + std::to_string(parents[i]) + "\n";
        m_text += "\n";
        return m_last;
    }
    void ref(const std::string& name, int mark) { m_text += "reset refs/" + name + "\nfrom :" + std::to_string(mark) + "\n\n"; }

    template <class List>
    std::size_t pick(const List& list)
    {
        return static_cast<std::size_t>(m_chance.below(list.size()));
    }

    int& placeIn(Marks& tips) { return tips[m_place % tips.size()]; }

    static constexpr std::size_t openTopics = 150;

    Chance m_chance;
    std::string m_text;
    long long m_time = 1'000'000'000;
    int m_last = 0;  ///< mark of the newest commit
    int m_main = 0;
    int m_kind = 0;           ///< what is done in this session
    std::size_t m_place = 0;  ///< where it is done: any number
    std::size_t m_topic = 0;  ///< where it is done, in m_open
    int m_nextRelease = 1500;
    std::vector<Topic> m_open;
    Marks m_done;  ///< topics that can be merged
    Marks m_trees;
    Marks m_maintained;
    Marks m_forks;
    Marks m_releases;
};

}  // namespace

std::string busyHistory(int commits)
{
    return BusyHistory().write(commits);
}
