"""Runs with a known number of sources, as `znica simulate` makes them but in many more variants.

An ellipsoidal brain with a mean image, blobs with the time courses of stimuli, drift, pulse, breathing, movement and
spontaneous fluctuations, amplitudes of 1 to 6 % of the mean, and noise that is smooth in space, correlated in time
(white plus autoregressive) and of varying strength from voxel to voxel. Without the slice-wise fluctuations of
`znica simulate`, which would be further components.
"""
from collections import namedtuple

import numpy
from scipy import ndimage, signal, special

SIZE = (40, 48, 36)  # x, y, z
HALF_AXES = (17.0, 21.0, 15.0)
SECONDS = 2.0  # per volume
STEP = 0.1  # seconds, of a stimulus before it is sampled
FWHM = 2.0 * numpy.sqrt(2.0 * numpy.log(2.0))

Series = namedtuple("Series", "values mask noise")  # values, noise: [volume][voxel of the mask]; mask: [z][y][x]


def brain():
    """The mask and the mean image of its voxels."""
    axes = [(numpy.arange(n) - (n - 1) / 2) / half for n, half in zip(SIZE, HALF_AXES)]
    z, y, x = numpy.meshgrid(axes[2], axes[1], axes[0], indexing="ij")
    square = x**2 + y**2 + z**2
    mask = square <= 1.0
    mean = 900 + 220 * (1 - square) + 60 * x + 40 * numpy.sin(9 * x) * numpy.sin(7 * y) * numpy.cos(8 * z)
    return mask, mean[mask]


def response_to(stimulus):
    """A stimulus in steps of STEP convolved with the haemodynamic response, one value per volume."""
    past = numpy.arange(STEP, 30.0, STEP)
    gammas = [numpy.exp(shape * numpy.log(past) - past - special.gammaln(shape + 1)) for shape in (5.0, 15.0)]
    response = numpy.concatenate([[0.0], gammas[0] - gammas[1] / 6])
    return numpy.convolve(stimulus, response)[: len(stimulus) : round(SECONDS / STEP)]


def time_course(index, volumes, random):
    """Mean 0, standard deviation 1: that of source `index`."""
    fine = numpy.arange(volumes * round(SECONDS / STEP)) * STEP
    if index in (0, 3):
        period, onset, duration = {0: (40, 10, 20), 3: (54, 6, 16)}[index]
        course = response_to(numpy.fmod(fine + period - onset, period) < duration)
    elif index == 1:
        share = numpy.arange(volumes) / volumes
        course = 1.5 * share + numpy.cos(2 * numpy.pi * (0.6 * share + random.uniform(0, 0.5)))
    elif index in (2, 4):
        steps = {2: 1.13, 4: 0.29}[index] * SECONDS + 0.03 * random.standard_normal(volumes)
        course = numpy.cos(2 * numpy.pi * (random.uniform() + numpy.cumsum(steps)))
    elif index == 5:
        onsets = 4.0 + numpy.cumsum(random.uniform(6, 22, size=volumes))
        course = response_to(((fine[:, None] >= onsets) & (fine[:, None] < onsets + 1.0)).any(axis=1))
    elif index == 6:
        moves = numpy.where(random.uniform(size=volumes) < 0.05, random.standard_normal(volumes), 0.0)
        moves[0] += random.standard_normal()
        course = signal.lfilter([0.97], [1, -0.97], moves)
    else:
        hertz, phase = random.uniform(0.01, 0.1, 12), random.uniform(size=12)
        seconds = numpy.arange(volumes)[:, None] * SECONDS
        course = numpy.cos(2 * numpy.pi * (hertz * seconds + phase)).sum(axis=1)
    return (course - course.mean()) / course.std()


def time_courses(count, volumes, random):
    """Of several draws per source, the one least similar to the earlier sources."""
    courses = []
    for index in range(count):
        draws = [time_course(index, volumes, random) for _ in range(20)]
        courses.append(min(draws, key=lambda draw: max((abs(draw @ other) for other in courses), default=0.0)))
    return numpy.array(courses)


def too_close(centres, radius, placed, gap):
    pairs = [(centre, other, radius + theirs) for centre in centres for other, theirs in placed]
    if len(centres) == 2:
        pairs.append((*centres, 2 * radius))
    return any(numpy.linalg.norm(a - b) < reach + gap for a, b, reach in pairs)


def maps(count, mask, random):
    """[source][voxel]: one blob, or two that mirror each other, overlapping more the more sources there are."""
    positions = numpy.argwhere(mask)[:, ::-1].astype(float)
    middle = (numpy.array(SIZE) - 1) / 2
    placed, weights = [], []
    for index in range(count):
        pair = index % 3 == 0
        radius = min(HALF_AXES) * random.uniform(0.3, 0.54) * (1.0 if pair else 2 ** (1 / 3))
        attempt = 0
        while True:
            unit = random.uniform(-1, 1, 3)
            if numpy.linalg.norm(unit) > 1:
                continue
            centre = middle + 0.85 * numpy.array(HALF_AXES) * unit
            mirrored = numpy.array([2 * middle[0] - centre[0], centre[1], centre[2]])
            centres = [centre, mirrored] if pair else [centre]
            if not too_close(centres, radius, placed, -radius * (0.35 + attempt // 500)):
                break
            attempt += 1
        placed += [(each, radius) for each in centres]
        nearest = numpy.min([numpy.linalg.norm(positions - each, axis=1) for each in centres], axis=0)
        weights.append(numpy.clip(1 - (nearest / radius) ** 2, 0, None) ** 2)
    return numpy.array(weights)


def noise(mask, volumes, width, random):
    """[volume][voxel], of unit variance: a fifth to three fifths of it autoregressive, the rest white."""
    share, memory = random.uniform(0.2, 0.6), random.uniform(0.3, 0.7)
    strength = ndimage.gaussian_filter(random.standard_normal(mask.shape), 5)[mask]
    strength = numpy.exp(0.25 * strength / strength.std())

    def field():
        white = random.standard_normal(mask.shape, dtype=numpy.float32)
        return (ndimage.gaussian_filter(white, width / FWHM, mode="wrap") if width > 0 else white)[mask]

    result = numpy.empty((volumes, mask.sum()), numpy.float32)
    slow = field()
    for volume in result:
        volume[:] = numpy.sqrt(1 - share) * field() + numpy.sqrt(share) * slow
        slow = memory * slow + numpy.sqrt(1 - memory**2) * field()
    result *= strength.astype(numpy.float32)
    return result / result.std()


def simulate(volumes, sources, width, noise_percent, seed):
    random = numpy.random.default_rng(seed)
    mask, mean = brain()
    amplitudes = 10 * numpy.exp(random.uniform(numpy.log(1), numpy.log(6), sources))
    courses = time_courses(sources, volumes, random)
    signals = (courses * amplitudes[:, None]).T.astype(numpy.float32) @ maps(sources, mask, random).astype("f4")
    scatter = noise(mask, volumes, width, random) * numpy.float32(10 * noise_percent)
    return Series(numpy.rint(mean + signals + scatter).astype(numpy.float32), mask, scatter)
