"""FastICA with symmetric decorrelation in plain numpy, from the start matrices of a run with a known seed.

Hyvarinen, IEEE Transactions on Neural Networks 10 (1999) 626-634. The random numbers are those of the Mersenne Twister
as the C++ standard seeds it with a single number.
"""
import numpy as np

from reference_ica import contrast, eigenpairs


def start_matrices(seed, n, count):
    """`count` matrices of numbers in [-0.5, 0.5), where no voxels are chosen before."""
    generator = np.random.MT19937()
    generator._legacy_seeding(seed)
    return [generator.random_raw(n * n).reshape(n, n) / 2.0**32 - 0.5 for _ in range(count)]


def decorrelated(w):
    """The nearest matrix with orthonormal rows, by the singular value decomposition."""
    left, _, right = np.linalg.svd(w)
    return left @ right


def fixed_point(z, start, name, epsilon, limit):
    """The unmixing matrix from a start, by the plain iteration; None without convergence."""
    w = decorrelated(start)
    for _ in range(limit):
        previous = w
        g, slope = contrast(name, w @ z)
        w = decorrelated(g @ z.T / z.shape[1] - slope.mean(axis=1)[:, None] * w)
        change = np.minimum(np.linalg.norm(w - previous, axis=1), np.linalg.norm(w + previous, axis=1))
        if change.max() < epsilon:
            return w
    return None


def symmetric_maps(x, n, name, start):
    """Maps (n x V) from centred data (V x T) and one start: by explained variance, third moments positive."""
    values, vectors = eigenpairs(x.T @ x / len(x))
    z = (vectors[:, :n] / np.sqrt(values[:n])).T @ x.T
    w = fixed_point(z, start, name, 1e-10, 20000)
    courses = (vectors[:, :n] * np.sqrt(values[:n])) @ w.T
    w = w[np.argsort(-courses.var(axis=0))]
    maps = w @ z
    return maps * np.sign((maps**3).mean(axis=1))[:, None]
