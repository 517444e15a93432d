"""The same runs on a Dask cluster, of which workers are lost."""

import random

import pytest
from plates import digests, make_runs, tree_digest

from jqstitching.many import stitch_many
from jqstitching.many.__main__ import main

distributed = pytest.importorskip("distributed")


def test_a_cluster_gives_the_same_results(tmp_path, monkeypatch):
    folders = make_runs(tmp_path / "plate", 8)
    expected = digests(stitch_many(folders, tmp_path / "here", workers=1))
    seed = random.randrange(1 << 30)
    print(f"seed {seed}")
    choice = random.Random(seed)
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=":0",
                                  host="127.0.0.1", silence_logs=50) as cluster:
        with distributed.Client(cluster, set_as_default=False) as client:
            lost = []

            def progress(done, total, run, outcome):
                if done == 2:
                    nanny = choice.choice(list(cluster.workers.values()))
                    lost.append(nanny.pid)
                    nanny.process.process.kill()

            there = stitch_many(folders, tmp_path / "there", client=client, progress=progress)
            # A process whose worker is lost may still finish its run; then it is kept.
            assert lost and {o["state"] for o in there} <= {"finished", "kept"}, (seed, there)
            assert digests(there) == expected, seed
            assert tree_digest(tmp_path / "there") == tree_digest(tmp_path / "here")
        out = str(tmp_path / "there")
        address = cluster.scheduler_address
        assert main([*map(str, folders), "-o", out, "--scheduler", address, "--quiet"]) == 0
        assert "8 kept" in (tmp_path / "there" / "index.html").read_text()
