#!/usr/bin/env python3
"""Saves of the camera's record that are killed, that find no room or no right to write.

usage: save-under-attack.py ZAVIKCTL
"""
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

zavikctl = sys.argv[1]
kills = 1000
# The leak checker's own process does not like to be killed.
os.environ['ASAN_OPTIONS'] = 'detect_leaks=0'


def run(*words, **options):
    return subprocess.run([zavikctl, *words], stderr=subprocess.PIPE, **options).returncode


def contents(path):
    with open(path, 'rb') as file:
        return file.read()


def killed_at_any_moment(folder):
    file = os.path.join(folder, 'config.bin')
    records = {}
    for level in ('1', '2'):
        assert run('config', 'defaults', file) == 0
        assert run('config', 'set', file, 'vid_hue=' + level) == 0
        records[level] = contents(file)
    started = time.monotonic()
    for _ in range(10):
        run('config', 'set', file, 'vid_hue=1')
    whole = (time.monotonic() - started) / 10
    now = '1'
    seen = {'old': 0, 'new': 0}
    for _ in range(kills):
        wanted = '2' if now == '1' else '1'
        saving = subprocess.Popen([zavikctl, 'config', 'set', file, 'vid_hue=' + wanted])
        time.sleep(random.uniform(0, 1.2 * whole))
        saving.kill()
        saving.wait()
        found = contents(file)
        assert found in records.values(), 'a mixture of %d bytes' % len(found)
        seen['new' if found == records[wanted] else 'old'] += 1
        now = wanted if found == records[wanted] else now
    print('killed %d times: %s' % (kills, seen))
    assert seen['old'] and seen['new'], 'the kills did not meet the saves'


def full_disk(folder):
    mount = os.path.join(folder, 'full')
    os.mkdir(mount)
    if subprocess.call(['mount', '-t', 'tmpfs', '-o', 'size=16k', 'none', mount], stderr=subprocess.DEVNULL):
        print('full disk: skipped, no right to mount')
        return
    try:
        file = os.path.join(mount, 'config.bin')
        assert run('config', 'defaults', file) == 0
        before = contents(file)
        with open(os.path.join(mount, 'filler'), 'wb', buffering=0) as filler:
            try:
                while filler.write(bytes(4096)):
                    pass
            except OSError:
                pass
        assert run('config', 'set', file, 'vid_hue=5') == 1
        assert contents(file) == before
        assert sorted(os.listdir(mount)) == ['config.bin', 'filler'], os.listdir(mount)
        print('full disk: refused, the old record whole')
    finally:
        subprocess.check_call(['umount', mount])


def without_rights(folder):
    closed = os.path.join(folder, 'closed')
    os.mkdir(closed)
    file = os.path.join(closed, 'config.bin')
    assert run('config', 'defaults', file) == 0
    before = contents(file)
    as_nobody = {}
    if os.getuid() == 0:
        as_nobody = {'user': 65534, 'group': 65534, 'extra_groups': []}
        os.chmod(folder, 0o755)
    os.chmod(closed, 0o555)
    os.chmod(file, 0o444)
    assert run('config', 'set', file, 'vid_hue=5', **as_nobody) == 1
    assert contents(file) == before
    # No file can be made beside it: written in place.
    os.chmod(file, 0o666)
    assert run('config', 'set', file, 'vid_hue=5', **as_nobody) == 0
    assert contents(file) != before and len(contents(file)) == 272
    os.chmod(closed, 0o755)
    print('read-only file refused, read-only folder written in place')


def links_of_a_card(folder):
    home = os.path.join(folder, 'home')
    card = os.path.join(folder, 'card')
    os.mkdir(home)
    os.mkdir(card)
    secret = os.path.join(home, 'diary')
    shutil.copy(os.path.join(folder, 'config.bin'), secret)
    before = contents(secret)
    for name, words in (('config.bin', ('config', 'set', None, 'vid_hue=5')), ('config.bin', ('config', 'defaults', None)),
                        ('timeset.cfg', ('clock', None, '2016/05/03 14:22:01'))):
        link = os.path.join(card, name)
        os.path.islink(link) or os.symlink('../home/diary', link)
        assert run(*[word or link for word in words]) == 1
        assert contents(secret) == before, words
    assert run('config', 'set', '--follow-link', os.path.join(card, 'config.bin'), 'vid_hue=5') == 0
    assert contents(secret) != before and os.path.islink(os.path.join(card, 'config.bin'))
    print('links: refused, but for the one that was meant')


def saving_at_once(folder):
    file = os.path.join(folder, 'config.bin')
    fields = ('vid_hue', 'vid_sharpness', 'aud_input_vol', 'DayTime')
    for turn in range(15):
        value = str(1 + turn % 3)
        saves = [subprocess.Popen([zavikctl, 'config', 'set', file, field + '=' + value]) for field in fields]
        assert [save.wait() for save in saves] == [0] * len(fields)
        shown = subprocess.check_output([zavikctl, 'config', 'show', file], text=True).split()
        lost = [field for field in fields if field + '=' + value not in shown]
        assert not lost, 'acknowledged and lost: %s' % lost
    print('%d pairs of saves at once: none lost' % (15 * len(fields)))


scratch = tempfile.mkdtemp()
try:
    killed_at_any_moment(scratch)
    assert len([name for name in os.listdir(scratch) if name.startswith('.zvk')]) <= 1, 'leftovers stay'
    saving_at_once(scratch)
    links_of_a_card(scratch)
    full_disk(scratch)
    without_rights(scratch)
finally:
    shutil.rmtree(scratch)
