"""The random start vectors of a run with a known seed: the Mersenne Twister, seeded as the C++ standard says."""
import numpy as np


def seed_sequence(seeds, count):
    """std::seed_seq(seeds).generate of `count` words ([rand.util.seedseq])."""
    words = [0x8B8B8B8B] * count
    lag = 11 if count >= 623 else 7 if count >= 68 else 5 if count >= 39 else 3
    p, q = (count - lag) // 2, (count - lag) // 2 + lag
    most = max(len(seeds) + 1, count)

    def mixed(k):
        value = words[k % count] ^ words[(k + p) % count] ^ words[(k - 1) % count]
        return value ^ (value >> 27)

    for k in range(most):
        first = 1664525 * mixed(k) & 0xFFFFFFFF
        second = first + (len(seeds) if k == 0 else k % count + (seeds[k - 1] if k <= len(seeds) else 0))
        words[(k + p) % count] = (words[(k + p) % count] + first) & 0xFFFFFFFF
        words[(k + q) % count] = (words[(k + q) % count] + second) & 0xFFFFFFFF
        words[k % count] = second & 0xFFFFFFFF
    for k in range(most, most + count):
        total = (words[k % count] + words[(k + p) % count] + words[(k - 1) % count]) & 0xFFFFFFFF
        first = 1566083941 * (total ^ (total >> 27)) & 0xFFFFFFFF
        second = (first - k % count) & 0xFFFFFFFF
        words[(k + p) % count] ^= first
        words[(k + q) % count] ^= second
        words[k % count] = second
    return words


def start_vectors(seed, n):
    """Vectors of n values, uniform in [-0.5, 0.5], one after another."""
    generator = np.random.MT19937()
    key = np.array(seed_sequence([seed, 0], 624), dtype=np.uint32)
    generator.state = {"bit_generator": "MT19937", "state": {"key": key, "pos": 624}}
    while True:
        yield (generator.random_raw(n) >> 1) / 0x7FFFFFFF - 0.5
