"""Spatial ICA by FastICA with deflation in plain numpy, step by step as in the papers; independent of the plug-in.

X is V voxels x T volumes, n the number of components, all in double precision.

Hyvarinen, IEEE Transactions on Neural Networks 10 (1999) 626-634; Golub and Van Loan, Matrix Computations, 8.5 (cyclic
Jacobi method).
"""
import numpy as np


def centred(voxels):
    """X: single-precision voxel values, every volume's mean over the voxels removed."""
    x = voxels.astype(np.float32).astype(np.float64)
    return x - x.mean(axis=0)


def eigenpairs(covariance):
    """Eigenvalues in descending order and their vectors as columns, by cyclic rotations.

    A library's eigenvectors would do except for their signs, on which the course of a run depends.
    """
    a = covariance.copy()
    size = len(a)
    vectors = np.eye(size)
    while (off := np.abs(np.triu(a, 1)).sum()) > 1e-14 * np.abs(np.diag(a)).sum():
        threshold = 0.2 * off / size**2
        for p in range(size - 1):
            for q in range(p + 1, size):
                if abs(a[p, q]) <= (threshold if off > 1e-6 * a[0, 0] else 0.0):
                    continue
                theta = 0.5 * (a[q, q] - a[p, p]) / a[p, q]
                t = 1.0 / (abs(theta) + np.hypot(theta, 1.0))
                if theta < 0.0:
                    t = -t
                c = 1.0 / np.hypot(t, 1.0)
                turn = np.array([[c, t * c], [-t * c, c]])
                a[:, [p, q]] = a[:, [p, q]] @ turn
                a[[p, q], :] = turn.T @ a[[p, q], :]
                vectors[:, [p, q]] = vectors[:, [p, q]] @ turn
    values = np.diag(a)
    order = np.argsort(-values)
    return values[order], vectors[:, order]


def contrast(name, y):
    """g(y) and g'(y)."""
    if name == "tanh":
        g = np.tanh(y)
        return g, 1.0 - g**2
    if name == "gauss":
        bell = np.exp(-(y**2) / 2.0)
        return y * bell, (1.0 - y**2) * bell
    return y**3, 3.0 * np.ones_like(y)  # of unit variance: E{3 y^2} = 3


def unit_vector(z, found, start, name, epsilon, limit):
    """One component and the number of its iterations; None at the limit."""
    w, previous = start, np.zeros_like(start)
    project = found @ found.T
    for iteration in range(limit + 1):
        for _ in range(2 if iteration == 0 else 1):
            w = w - project @ w
            w = w / np.linalg.norm(w)
        if iteration == limit:
            return None
        if min(np.linalg.norm(w - previous), np.linalg.norm(w + previous)) < epsilon:
            return w, iteration + 1
        previous = w
        g, slope = contrast(name, w @ z)
        w = (z * g).mean(axis=1) - slope.mean() * w


def ica(x, n, name, starts, epsilon=float(np.float32(1e-4)), limit=500):
    """Eigenvalues, maps (n x V), time courses (T x n) and iterations; `starts` gives vectors of n values in turn."""
    values, vectors = eigenpairs(x.T @ x / len(x))
    whitening = (vectors[:, :n] / np.sqrt(values[:n])).T
    z = whitening @ x.T
    found = np.zeros((n, 0))
    iterations = []
    while found.shape[1] < n:
        result = unit_vector(z, found, next(starts), name, epsilon, limit)
        if result is not None:
            found = np.column_stack([found, result[0]])
            iterations.append(result[1])
    courses = (vectors[:, :n] * np.sqrt(values[:n])) @ found
    return values, found.T @ whitening @ x.T, courses, iterations
