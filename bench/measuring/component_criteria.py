"""The number of components by criteria that the command does not have, and the number that can be detected."""
import numpy
from scipy import ndimage


def centred(series):
    return series.values - series.values.mean(axis=1, keepdims=True)


def eigenvalues(centred_values):
    """Of the temporal covariance, in descending order, those at rounding level omitted."""
    covariance = (centred_values @ centred_values.T).astype(numpy.float64) / centred_values.shape[1]
    values = numpy.linalg.eigvalsh(covariance)[::-1]
    return values[values > 1e-12 * values[0]]


def detectable(series):
    """The mean image and the sources that can be detected: eigenvalues above the largest of the noise alone.

    By Weyl's inequality there are at most as many as there are sources. Below that limit the leading directions say
    nothing about a source (Baik, Ben Arous and Peche 2005, Annals of Probability 33, 1643-1697).
    """
    noise = series.noise - series.noise.mean(axis=1, keepdims=True)
    return int((eigenvalues(centred(series)) > eigenvalues(noise)[0]).sum())


def hard_threshold(series):
    """Gavish and Donoho (2014) with every voxel as a sample."""
    values = eigenvalues(centred(series))
    ratio = min(1.0, len(values) / series.values.shape[1])
    factor = 0.56 * ratio**3 - 0.95 * ratio**2 + 1.82 * ratio + 1.43
    return int((values > factor**2 * numpy.median(values)).sum())


def minimum_description_length(values, samples):
    d = len(values)
    costs = []
    for k in range(1, d // 2 + 1):
        rest = values[k:]
        fit = samples * (d - k) * (numpy.log(rest.mean()) - numpy.log(rest).mean())
        costs.append(fit + k * (2 * d - k) / 2 * numpy.log(samples))
    return 1 + int(numpy.argmin(costs))


def width(series):
    """Smoothness in voxels (FWHM), from the differences of consecutive volumes along the three axes."""
    steps = numpy.full((len(series.values) - 1, *series.mask.shape), numpy.nan, numpy.float32)
    steps[:, series.mask] = numpy.diff(series.values, axis=0)
    widths = []
    for axis in (1, 2, 3):
        first, second = (numpy.take(steps, range(i, steps.shape[axis] - 1 + i), axis=axis) for i in (0, 1))
        both = ~numpy.isnan(first[0]) & ~numpy.isnan(second[0])
        first, second = first[:, both], second[:, both]
        correlation = 1 - ((first - second) ** 2).sum() / ((first**2).sum() + (second**2).sum())
        widths.append(numpy.sqrt(-2 * numpy.log(2) / numpy.log(correlation)) if correlation > 0 else 0.0)
    return float(numpy.mean(widths))


def subsampled(series):
    """MDL on voxels as far apart as the data are smooth (Li, Adali and Calhoun 2007, Human Brain Mapping 28, 1251)."""
    stride = max(1, int(numpy.ceil(width(series))))
    chosen = numpy.zeros(series.mask.shape, bool)
    chosen[::stride, ::stride, ::stride] = True
    values = centred(series)[:, chosen[series.mask]]
    values = values - values.mean(axis=1, keepdims=True)
    return minimum_description_length(eigenvalues(values)[: values.shape[1] - 1], values.shape[1])


def smoothed(series, voxels):
    """The series, its noise included, smoothed within the mask."""
    if voxels == 0:
        return series
    noise = None if series.noise is None else smoothed_values(series.noise, series.mask, voxels)
    return series._replace(values=smoothed_values(series.values, series.mask, voxels), noise=noise)


def smoothed_values(values, mask, voxels):
    sigma = voxels / 2.354820045
    weight = ndimage.gaussian_filter(mask.astype(numpy.float32), sigma)[mask]
    result = numpy.empty_like(values)
    for volume, target in zip(values, result):
        image = numpy.zeros(mask.shape, numpy.float32)
        image[mask] = volume
        target[:] = ndimage.gaussian_filter(image, sigma)[mask] / weight
    return result
