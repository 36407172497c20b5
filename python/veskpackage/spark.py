# SPDX-License-Identifier: Apache-2.0
"""Packages and findings as dataframes of Apache Spark, for more manifests than one machine should read.

>>> from veskpackage.spark import check_packages, read_packages
>>> files = spark.read.format("binaryFile").load("s3a://store/*/manifest.xml")
>>> read_packages(files).select("file", "package.uuid", "package.version").show()

Both functions take a dataframe with a column `path`, and one `content` with the bytes of each file, as Spark
reads with the format "binaryFile". Without that column, or where it is null, the workers open the paths
themselves: then these are paths that each worker has, also written as "file:/...".

Needs PySpark and PyArrow; the workers need this package as well. The work is done when Spark asks for rows.
"""

from __future__ import annotations

from collections.abc import Callable, Mapping
from functools import partial
from typing import TYPE_CHECKING, Any

from .checking import Severity, _options

if TYPE_CHECKING:
    from pyspark.sql import DataFrame  # type: ignore

__all__ = ["check_packages", "read_packages"]


def read_packages(files: DataFrame) -> DataFrame:
    """A row for each file: `file`, its path; `package`, a struct with the fields under their names in JSON; and
    `error`, null where all is well, or why there is no package: a struct of `message`, `line`, `column` and
    `is_beyond_limits`, as ManifestError has them. Line and column are 0 where a file cannot be opened.

    Raises TypeError for what is no dataframe or a column of another type, ValueError without `path`.
    """
    from ._arrow import PACKAGES, read_batches

    return _mapped(files, read_batches, PACKAGES)


def check_packages(
    files: DataFrame, *, severities: Mapping[str, Severity] = {}, most_of_a_rule: int = 1000
) -> DataFrame:
    """A row for each finding of each file: `file`, its path, and the members of a Finding, with structs for
    `begin`, `end` and `mend`. A file that cannot be read is a row of the rule "unreadable". The rows of a file
    are in the order of its text. `severities` and `most_of_a_rule` are as for `veskpackage.check`: of a rule
    the first findings of a file are given.

    Raises ValueError for a rule or severity that there is not, and what `read_packages` raises.
    """
    from ._arrow import FINDINGS, check_batches

    _options(severities, "", most_of_a_rule)
    check = partial(check_batches, severities=dict(severities), most_of_a_rule=most_of_a_rule)
    return _mapped(files, check, FINDINGS)


def _mapped(files: DataFrame, work: Callable[..., Any], schema: Any) -> DataFrame:
    from pyspark.sql.pandas.types import from_arrow_schema  # type: ignore

    return files.select(_columns(files)).mapInArrow(work, from_arrow_schema(schema))


def _columns(files: DataFrame) -> list[Any]:
    """Looked at here, since the workers would say less, and late. As in Spark, case does not matter."""
    if not hasattr(files, "schema"):
        raise TypeError(f"a dataframe of files is wanted, not {type(files).__name__}")
    fields = {field.name.lower(): field for field in files.schema}
    if "path" not in fields:
        raise ValueError("files have no column path")
    columns = []
    for name, types in (("path", ("string", "binary")), ("content", ("binary",))):
        if field := fields.get(name):
            if field.dataType.typeName() not in types:
                kind = field.dataType.simpleString()
                raise TypeError(f"{field.name}: {' or '.join(types)} is wanted, not {kind}")
            columns.append(files[field.name].alias(name))
    return columns
