// Writing as Windows writes: one line changes, new keys land where Windows puts them.

#include "StoreTestSupport.h"

TEST_F(StoreTest, AWriteChangesOnlyTheLineOfItsKeyAndNewOnesLandWhereWindowsPutsThem) {
    const QString file = path("keep.game");
    const QByteArray original =
        "; made by hand\r\n\r\n[GAME]\r\n  Name =  Duel  \r\nunknown=stays\r\n"
        "NAME=shadowed\r\n\r\n[player 2]\r\nNAME=x\r\nbare\r\n"
        "[Game]\r\nplayers=9\r\n[Outside]\r\nk = v\r\n";
    put(file, original);

    ASSERT_EQ(save("game", "name", "Trio", file), 1);
    QByteArray expected = original;
    expected.replace("  Name =  Duel  \r\n", "  Name =  Trio\r\n");
    EXPECT_EQ(bytesOf(file), expected);

    // The first section of a name gets new keys, after its last non-blank line.
    ASSERT_EQ(save("GAME", "players", "3", file), 1);
    expected.replace("NAME=shadowed\r\n", "NAME=shadowed\r\nplayers=3\r\n");
    EXPECT_EQ(bytesOf(file), expected);

    // The key keeps the spelling the file gives it; a bare key gains its "=".
    ASSERT_EQ(WriteProfileValue("Player 2", "name", "y", file), 1);
    ASSERT_EQ(WriteProfileValue("PLAYER 2", "Bare", "now set", file), 1);
    ASSERT_EQ(WriteProfileValue("Outside", "k", "w", file), 1);
    FlushProfiles();
    expected.replace("NAME=x\r\nbare\r\n", "NAME=y\r\nbare=now set\r\n");
    expected.replace("k = v\r\n", "k = w\r\n");
    EXPECT_EQ(bytesOf(file), expected);

    store::DropProfileCache();
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "Trio");
    EXPECT_EQ(ReadProfileValue("GAME", "players", file), "3");
    EXPECT_EQ(ReadProfileValue("player 2", "BARE", file), "now set");

    const QString created = path("new.game");
    ASSERT_EQ(WriteProfileValue("GAME", "name", "Duel", created), 1);
    ASSERT_EQ(WriteProfileValue("Player 1", "name", "North", created), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "players", "2", created), 1);
    EXPECT_FALSE(QFile::exists(created)) << "nothing reaches the disk before the flush";
    EXPECT_EQ(ReadProfileValue("game", "players", created), "2") << "a read sees the write at once";
    FlushProfiles();
    EXPECT_EQ(bytesOf(created), "[GAME]\r\nname=Duel\r\nplayers=2\r\n[Player 1]\r\nname=North\r\n");

    // Each file keeps its own line ends, and gets one before a new section.
    const QString lf = path("lf.game");
    put(lf, "[A]\nx=1\n\n");
    ASSERT_EQ(WriteProfileValue("A", "y", "2", lf), 1);
    ASSERT_EQ(WriteProfileValue("B", "z", "3", lf), 1);
    FlushProfiles();
    EXPECT_EQ(bytesOf(lf), "[A]\nx=1\ny=2\n\n[B]\nz=3\n");
    struct Case {
        const char *before, *section, *after;
    };
    for (const Case& c :
         {Case{"[A]\rx=1", "B", "[A]\rx=1\r[B]\ry=2\r"},
          Case{"[A]\r\nx=1", "A", "[A]\r\nx=1\r\ny=2\r\n"}, Case{"[A]", "a", "[A]\r\ny=2\r\n"}}) {
        put(path("ends.game"), c.before);
        store::DropProfileCache();
        ASSERT_EQ(save(c.section, "y", "2", path("ends.game")), 1);
        EXPECT_EQ(bytesOf(path("ends.game")), c.after) << c.before;
    }
}

TEST_F(StoreTest, ValuesAndNamesGoInAsWindowsWritesThem) {
    const QString file = path("values.game");
    ASSERT_EQ(WriteProfileValue("GAME", "empty", "", file), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "padded", " \t text with = and \"quotes\" ", file), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "description", "line one\r\nline two", file), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "long", QString(300, u'z'), file), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "after", "1", file), 1);

    // What a read gives before the flush is what the file gives after it.
    const auto check = [&] {
        EXPECT_EQ(ReadProfileValue("GAME", "empty", file), "");
        EXPECT_EQ(ReadProfileValue("GAME", "padded", file), "text with = and \"quotes\"");
        EXPECT_EQ(ReadProfileValue("GAME", "description", file), "line one");
        EXPECT_EQ(ReadProfileValue("GAME", "long", file), QString(254, u'z'));
        EXPECT_EQ(ReadProfileValue("GAME", "after", file), "1");
    };
    check();
    FlushProfiles();
    EXPECT_EQ(bytesOf(file), "[GAME]\r\nempty=\r\npadded=text with = and \"quotes\" \r\n"
                             "description=line one\r\nline two\r\nlong=" +
                                 QByteArray(300, 'z') + "\r\nafter=1\r\n");
    store::DropProfileCache();
    check();

    // A value whose lines look like a header is read the way the file reads.
    ASSERT_EQ(WriteProfileValue("GAME", "description", "x\n[Sneaky]\nk=v", file), 1);
    EXPECT_EQ(ReadProfileValue("Sneaky", "k", file), "v");
    ASSERT_EQ(WriteProfileValue("GAME", "late", "2", file), 1);
    FlushProfiles();
    store::DropProfileCache();
    EXPECT_EQ(ReadProfileValue("Sneaky", "k", file), "v");
    EXPECT_EQ(ReadProfileValue("GAME", "late", file), "2");

    // Windows writes any name it is given, and the file then says what it means.
    const QString names = path("names.game");
    put(names, "top=1\r\n[GAME]\r\nname=Duel\r\nbad=first\r\n");
    ASSERT_EQ(WriteProfileValue("GAME", "bad=key", "v", names), 1);
    EXPECT_EQ(ReadProfileValue("GAME", "bad", names), "first") << "the first key of a name counts";
    ASSERT_EQ(WriteProfileValue("GAME", ";semi", "s", names), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "[open", "o", names), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "line\nbreak", "b", names), 1);
    ASSERT_EQ(WriteProfileValue("", "Top", "2", names), 1);
    ASSERT_EQ(WriteProfileValue("", "second", "3", names), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "lead", QStringLiteral("\v\f\x1A\tvalue "), names), 1);
    EXPECT_EQ(ReadProfileValue("GAME", "bad=key", names), "");
    EXPECT_EQ(ReadProfileValue("GAME", ";semi", names), "s");
    EXPECT_EQ(ReadProfileValue("GAME", "[open", names), "o");
    EXPECT_EQ(ReadProfileValue("GAME", "line", names), "");
    EXPECT_EQ(ReadProfileValue("GAME", "break", names), "b");
    EXPECT_EQ(ReadProfileValue("", "top", names), "2");
    FlushProfiles();
    EXPECT_EQ(bytesOf(names).toStdString(),
              "top=2\r\nsecond=3\r\n[GAME]\r\nname=Duel\r\nbad=first\r\nbad=key=v\r\n;semi=s\r\n"
              "[open=o\r\nline\nbreak=b\r\nlead=value \r\n");
    EXPECT_TRUE(errors.empty());

    // The section before any header is "" also in a file without headers.
    const QString plain = path("plain.game");
    ASSERT_EQ(save("", "k", "v", plain), 1);
    EXPECT_EQ(bytesOf(plain), "k=v\r\n");
    put(plain, "[]\r\nk=under an empty header\r\n");
    EXPECT_EQ(ReadProfileValue("", "k", plain), "") << "the lines before the header come first";
}

TEST_F(StoreTest, TheFileIsReplacedOnlyForAChangeAndOnlyWhenTheOutermostBatchEnds) {
    const QString file = path("same.game");
    put(file, "[GAME]\r\nname = Duel  \r\nempty=\r\n");
    const struct stat before = statOf(file);
    EXPECT_EQ(save("GAME", "name", "Duel", file), 1);
    EXPECT_EQ(save("GAME", "empty", "", file), 1);
    EXPECT_EQ(save("GAME", "name", "  Duel", file), 1);
    EXPECT_EQ(statOf(file).st_ino, before.st_ino) << "the file was replaced";
    EXPECT_EQ(bytesOf(file), "[GAME]\r\nname = Duel  \r\nempty=\r\n");

    // A change and its undoing before one flush also leave the file alone.
    ASSERT_EQ(WriteProfileValue("GAME", "empty", "Other", file), 1);
    ASSERT_EQ(WriteProfileValue("GAME", "empty", "", file), 1);
    FlushProfiles();
    EXPECT_EQ(statOf(file).st_ino, before.st_ino);
    EXPECT_TRUE(errors.empty());

    batch.reset();
    const QString fresh = path("b.game");
    ASSERT_EQ(WriteProfileValue("GAME", "name", "One", fresh), 1);
    EXPECT_EQ(bytesOf(fresh), "[GAME]\r\nname=One\r\n");
    {
        const store::WriteBatch outer;
        {
            const store::WriteBatch inner;
            WriteProfileValue("GAME", "name", "Two", fresh);
        }
        WriteProfileValue("GAME", "players", "2", fresh);
        EXPECT_EQ(bytesOf(fresh), "[GAME]\r\nname=One\r\n");
        EXPECT_EQ(ReadProfileValue("GAME", "name", fresh), "Two");
    }
    EXPECT_EQ(bytesOf(fresh), "[GAME]\r\nname=Two\r\nplayers=2\r\n");
    EXPECT_TRUE(errors.empty());
}
