#ifndef JQ_TESTS_SUPPORT_ADDRESS_LIMIT_H
#define JQ_TESTS_SUPPORT_ADDRESS_LIMIT_H

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>

/// While it lives, the process can take no more address space than it has and a little:
/// large pieces of memory are refused. `holds` tells whether the system keeps to that;
/// emulators and sanitizers do not.
class AddressLimit {
 public:
  explicit AddressLimit(std::size_t more) {
    getrlimit(RLIMIT_AS, &m_before);
    rlimit limit = m_before;
    limit.rlim_cur = Taken() + more;
    m_holds = Suits() && setrlimit(RLIMIT_AS, &limit) == 0 && Refuses(2 * more);
  }
  ~AddressLimit() { setrlimit(RLIMIT_AS, &m_before); }
  AddressLimit(const AddressLimit&) = delete;
  AddressLimit& operator=(const AddressLimit&) = delete;

  bool holds() const { return m_holds; }

 private:
  static constexpr bool Suits() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return false;
#else
    return true;
#endif
#else
    return true;
#endif
  }
  static std::size_t Taken() {
    long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
      if (std::fscanf(file, "%ld", &pages) != 1) pages = 0;
      std::fclose(file);
    }
    return static_cast<std::size_t>(pages) * static_cast<std::size_t>(getpagesize());
  }
  static bool Refuses(std::size_t bytes) {
    void* const block =
        mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED) return true;
    munmap(block, bytes);
    return false;
  }

  rlimit m_before{};
  bool m_holds = false;
};

#endif  // JQ_TESTS_SUPPORT_ADDRESS_LIMIT_H
