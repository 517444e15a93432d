#ifndef JQHOST_ASSEMBLE_ISLAND_JOINER_H
#define JQHOST_ASSEMBLE_ISLAND_JOINER_H

#include <map>
#include <utility>
#include <vector>

#include "host/assemble/loops.h"
#include "host/assemble/place_frames.h"

namespace jqhost {

/// Joins islands by weak links that others confirm.
///
/// Weak links between two islands each say where one lies in the other. Those that agree
/// within `kAgreement` are one proposal; what speaks for it is counted:
/// - its links, of those that look at one part of the scene only one: two whose frames lie
///   less than a tenth of a frame apart at both ends say the same thing twice (as does the
///   same frame given twice);
/// - the other pairs of frames, one of each island, that overlap by it and look right there;
///   but not where all its links are of frames that differ more than those of other links do.
/// Two voices are needed, and more than any other proposal for the two islands has. A pair
/// that looks wrong takes two voices away.
class IslandJoiner {
 public:
  /// @param frame size of a frame
  IslandJoiner(const Places& places, cv::Size frame, const LookAtSide& look,
               std::vector<Link>& links);

  /// Uses the links of the proposal that most speaks for; of equal ones that of most
  /// confidence. @return false where there is none
  bool Join();

 private:
  // A weak link between two islands: from the one of the lower number to the other.
  struct Bridge {
    std::size_t link = 0;
    cv::Point2d way;       // of the other island's origin from this one's
    cv::Point2d from, to;  // where its frames lie in their islands
  };
  struct Proposal {
    std::vector<Bridge> bridges;
    cv::Point2d way;
    int voices = 0;
    double confidence = 0.0;
  };
  using IslandPair = std::pair<std::size_t, std::size_t>;

  Bridge MakeBridge(std::size_t number, bool forwards) const;
  bool LookElsewhere(const Bridge& a, const Bridge& b) const;
  Proposal Best(const IslandPair& islands, const std::vector<Bridge>& bridges) const;
  Proposal Propose(const IslandPair& islands, const std::vector<Bridge>& bridges,
                   cv::Point2d way) const;
  int VoicesOfLinks(const Proposal& proposal) const;
  int VoicesOfPictures(const IslandPair& islands, const Proposal& proposal) const;
  static bool IsStronger(const Proposal& a, const Proposal& b);

  const Places& m_places;
  const cv::Size m_frame;
  const LookAtSide& m_look;
  std::vector<Link>& m_links;
  std::vector<std::vector<std::size_t>> m_members;  // of each island
  std::map<IslandPair, std::vector<Bridge>> m_bridges;
};

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_ISLAND_JOINER_H
